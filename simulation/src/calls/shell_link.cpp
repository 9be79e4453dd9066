// The shell link object.
#include "calls/com_call.hpp"

#include "full_path.hpp"
#include "lookup.hpp"
#include "shell_link_file.hpp"
#include "whole_file.hpp"

#include <shlobj.h>

#include <algorithm>
#include <atomic>
#include <memory>

namespace fl::simulation {

namespace {

/// One object with two interfaces, which share the count of references.
// Deleted by Release alone: NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor)
class shell_link final : public IShellLinkW, public IPersistFile
{
public:
    explicit shell_link(std::shared_ptr<interface_count> interfaces) noexcept
        : interfaces_(std::move(interfaces))
    {
        ++interfaces_->live;
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void **object) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;

    /// `QueryInterface` without a caller: no call for the journal.
    HRESULT hand_out(REFIID wanted, void **object);

    HRESULT STDMETHODCALLTYPE GetPath(LPWSTR, int, WIN32_FIND_DATAW *, DWORD) override;
    HRESULT STDMETHODCALLTYPE SetPath(LPCWSTR) override;
    HRESULT STDMETHODCALLTYPE Resolve(HWND, DWORD) override;

    HRESULT STDMETHODCALLTYPE GetClassID(CLSID *) override;
    HRESULT STDMETHODCALLTYPE IsDirty() override;
    HRESULT STDMETHODCALLTYPE Load(LPCOLESTR, DWORD) override;
    HRESULT STDMETHODCALLTYPE Save(LPCOLESTR, BOOL) override;
    HRESULT STDMETHODCALLTYPE SaveCompleted(LPCOLESTR) override;

    HRESULT STDMETHODCALLTYPE GetIDList(PIDLIST_ABSOLUTE *) override;
    HRESULT STDMETHODCALLTYPE SetIDList(PCIDLIST_ABSOLUTE) override;
    HRESULT STDMETHODCALLTYPE GetDescription(LPWSTR, int) override;
    HRESULT STDMETHODCALLTYPE SetDescription(LPCWSTR) override;
    HRESULT STDMETHODCALLTYPE GetWorkingDirectory(LPWSTR, int) override;
    HRESULT STDMETHODCALLTYPE SetWorkingDirectory(LPCWSTR) override;
    HRESULT STDMETHODCALLTYPE GetArguments(LPWSTR, int) override;
    HRESULT STDMETHODCALLTYPE SetArguments(LPCWSTR) override;
    HRESULT STDMETHODCALLTYPE GetHotkey(WORD *) override;
    HRESULT STDMETHODCALLTYPE SetHotkey(WORD) override;
    HRESULT STDMETHODCALLTYPE GetShowCmd(int *) override;
    HRESULT STDMETHODCALLTYPE SetShowCmd(int) override;
    HRESULT STDMETHODCALLTYPE GetIconLocation(LPWSTR, int, int *) override;
    HRESULT STDMETHODCALLTYPE SetIconLocation(LPCWSTR, int) override;
    HRESULT STDMETHODCALLTYPE SetRelativePath(LPCWSTR, DWORD) override;
    HRESULT STDMETHODCALLTYPE GetCurFile(LPOLESTR *) override;

private:
    ~shell_link() = default;

    std::shared_ptr<interface_count> interfaces_;
    std::atomic<ULONG> references_ = 1;
    std::u16string target_;
    std::u16string file_; // that a Save without a name means
    bool is_dirty_ = false;
};

HRESULT shell_link::hand_out(REFIID wanted, void **object)
{
    if (object == nullptr)
        return E_POINTER;
    *object = nullptr;
    if (wanted == IID_IUnknown || wanted == IID_IShellLinkW)
        *object = static_cast<IShellLinkW *>(this);
    else if (wanted == IID_IPersist || wanted == IID_IPersistFile)
        *object = static_cast<IPersistFile *>(this);
    else
        return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

HRESULT shell_link::QueryInterface(REFIID wanted, void **object)
{
    if (object != nullptr)
        *object = nullptr;
    return perform_com("IUnknown::QueryInterface", nullptr,
                       [&](machine_state &) { return hand_out(wanted, object); });
}

ULONG shell_link::AddRef()
{
    ++interfaces_->live;
    return ++references_;
}

ULONG shell_link::Release()
{
    --interfaces_->live;
    ULONG const left = --references_;
    if (left == 0)
        delete this;
    return left;
}

/// Cuts a path that doesn't fit.
void hand_over_path(std::u16string_view path, LPWSTR buffer, int room)
{
    if (room <= 0)
        return;
    std::size_t const units = static_cast<std::size_t>(room);
    std::size_t const length = std::min(path.size(), units - 1);
    wchar_t *const end = std::copy_n(path.begin(), length, buffer);
    *end = L'\0';
    std::fill(end + 1, buffer + units, buffer_junk);
}

HRESULT shell_link::GetPath(LPWSTR buffer, int room, WIN32_FIND_DATAW *found, DWORD flags)
{
    call const made{.function = "IShellLinkW::GetPath",
                    .flags = flags,
                    .room = static_cast<std::uint64_t>(std::max(room, 0))};
    return perform_com(made, [&](machine_state &) {
        if (buffer == nullptr)
            return E_INVALIDARG;
        if (found != nullptr)
            return E_NOTIMPL;
        hand_over_path(target_, buffer, room);
        return target_.empty() ? S_FALSE : S_OK;
    });
}

HRESULT shell_link::SetPath(LPCWSTR path)
{
    return perform_com("IShellLinkW::SetPath", path, [&](machine_state &machine) {
        if (path == nullptr)
            return E_INVALIDARG;
        std::u16string const text = from_wide(path);
        target_ = text.empty() || is_literal(text) ? text : full_path(text, machine);
        is_dirty_ = true;
        return S_OK;
    });
}

/// Without a window there is nobody to ask about a target that has gone. The machine
/// doesn't search for one that was moved.
HRESULT shell_link::Resolve(HWND, DWORD flags)
{
    call const made{.function = "IShellLinkW::Resolve", .flags = flags};
    return perform_com(made, [&](machine_state &machine) {
        if (!target_.empty()) {
            pathname const path = parse_pathname(target_, machine);
            if (!path.is_device())
                find_existing(path, machine);
        }
        return S_OK;
    });
}

HRESULT shell_link::GetClassID(CLSID *id)
{
    return perform_com("IPersist::GetClassID", nullptr, [&](machine_state &) {
        if (id == nullptr)
            return E_POINTER;
        *id = CLSID_ShellLink;
        return S_OK;
    });
}

HRESULT shell_link::IsDirty()
{
    return perform_com("IPersistFile::IsDirty", nullptr,
                       [&](machine_state &) { return is_dirty_ ? S_OK : S_FALSE; });
}

HRESULT shell_link::Load(LPCOLESTR file, DWORD mode)
{
    call const made{.function = "IPersistFile::Load", .text = file, .flags = mode};
    return perform_com(made, [&](machine_state &machine) {
        if (file == nullptr)
            return E_INVALIDARG;
        std::u16string const name = from_wide(file);
        target_ = read_shell_link(read_whole_file(machine, name));
        file_ = name;
        is_dirty_ = false;
        return S_OK;
    });
}

HRESULT shell_link::Save(LPCOLESTR file, BOOL remember)
{
    call const made{
        .function = "IPersistFile::Save", .text = file, .flags = static_cast<DWORD>(remember)};
    return perform_com(made, [&](machine_state &machine) {
        std::u16string const name = file == nullptr ? file_ : from_wide(file);
        if (file == nullptr && name.empty())
            return E_FAIL; // it was neither loaded nor saved before
        write_whole_file(machine, name, write_shell_link(target_));
        if (file == nullptr || remember) {
            file_ = name;
            is_dirty_ = false;
        }
        return S_OK;
    });
}

HRESULT shell_link::SaveCompleted(LPCOLESTR file)
{
    return perform_com("IPersistFile::SaveCompleted", file, [](machine_state &) { return S_OK; });
}

/// The methods that the machine has nothing for.
HRESULT refuse(char const *function)
{
    return perform_com(function, nullptr, [](machine_state &) { return E_NOTIMPL; });
}

HRESULT shell_link::GetIDList(PIDLIST_ABSOLUTE *)
{
    return refuse("IShellLinkW::GetIDList");
}

HRESULT shell_link::SetIDList(PCIDLIST_ABSOLUTE)
{
    return refuse("IShellLinkW::SetIDList");
}

HRESULT shell_link::GetDescription(LPWSTR, int)
{
    return refuse("IShellLinkW::GetDescription");
}

HRESULT shell_link::SetDescription(LPCWSTR)
{
    return refuse("IShellLinkW::SetDescription");
}

HRESULT shell_link::GetWorkingDirectory(LPWSTR, int)
{
    return refuse("IShellLinkW::GetWorkingDirectory");
}

HRESULT shell_link::SetWorkingDirectory(LPCWSTR)
{
    return refuse("IShellLinkW::SetWorkingDirectory");
}

HRESULT shell_link::GetArguments(LPWSTR, int)
{
    return refuse("IShellLinkW::GetArguments");
}

HRESULT shell_link::SetArguments(LPCWSTR)
{
    return refuse("IShellLinkW::SetArguments");
}

HRESULT shell_link::GetHotkey(WORD *)
{
    return refuse("IShellLinkW::GetHotkey");
}

HRESULT shell_link::SetHotkey(WORD)
{
    return refuse("IShellLinkW::SetHotkey");
}

HRESULT shell_link::GetShowCmd(int *)
{
    return refuse("IShellLinkW::GetShowCmd");
}

HRESULT shell_link::SetShowCmd(int)
{
    return refuse("IShellLinkW::SetShowCmd");
}

HRESULT shell_link::GetIconLocation(LPWSTR, int, int *)
{
    return refuse("IShellLinkW::GetIconLocation");
}

HRESULT shell_link::SetIconLocation(LPCWSTR, int)
{
    return refuse("IShellLinkW::SetIconLocation");
}

HRESULT shell_link::SetRelativePath(LPCWSTR, DWORD)
{
    return refuse("IShellLinkW::SetRelativePath");
}

HRESULT shell_link::GetCurFile(LPOLESTR *)
{
    return refuse("IPersistFile::GetCurFile");
}

} // namespace

HRESULT make_shell_link(machine_state &machine, REFIID wanted, void **object)
{
    auto *const made = new shell_link(machine.com.interfaces);
    HRESULT const answer = made->hand_out(wanted, object);
    made->Release(); // the caller has its own reference, if any
    return answer;
}

} // namespace fl::simulation
