#include "differential/executor.hpp"

#include "differential/file_steps.hpp"
#include "differential/host.hpp"
#include "support/text.hpp"

#include <windows.h>

#include <algorithm>
#include <stdexcept>

namespace differential {

using test_support::units;
using test_support::wide;

namespace {

std::string done_or_failed(BOOL done)
{
    DWORD const code = ::GetLastError();
    return done ? "ok" : failed_with(code);
}

/// Runs `call(room, buffer)`, which hands a text over, first without any room.
template <typename Call>
std::string handed_over(unsigned int number, Call call)
{
    ::SetLastError(untouched);
    DWORD const size = call(0, nullptr);
    DWORD const code = ::GetLastError();
    if (size == 0)
        return failed_with(code);
    std::wstring buffer(size, L'#');
    DWORD const length = call(size, buffer.data());
    if (length >= size)
        return "asked for " + std::to_string(size) + ", then for " + std::to_string(length);
    bool const has_end = size == length + 1 && buffer[length] == L'\0';
    buffer.resize(length);
    return "ok " + shown(buffer, number) + (has_end ? "" : " without its end");
}

std::string attributes(std::wstring const &text)
{
    DWORD const found = ::GetFileAttributesW(text.c_str());
    DWORD const code = ::GetLastError();
    return found == INVALID_FILE_ATTRIBUTES ? failed_with(code)
                                            : "ok " + std::to_string(found & compared_attributes);
}

/// Always with room enough: of another drive's directory Wine writes more into a
/// buffer than there is room for.
std::string full_path(std::wstring const &text, unsigned int number)
{
    std::wstring buffer(2000, L'#');
    DWORD const room = static_cast<DWORD>(buffer.size());
    DWORD const length = ::GetFullPathNameW(text.c_str(), room, buffer.data(), nullptr);
    DWORD const code = ::GetLastError();
    if (length == 0)
        return failed_with(code);
    if (length >= room)
        return "too long";
    bool const has_end = buffer[length] == L'\0';
    buffer.resize(length);
    return "ok " + shown(buffer, number) + (has_end ? "" : " without its end");
}

std::string set_variable(step const &one, std::vector<std::wstring> const &texts)
{
    bool const is_kept = one.numbers[0] != 0;
    return done_or_failed(
        ::SetEnvironmentVariableW(texts[0].c_str(), is_kept ? texts[1].c_str() : nullptr));
}

std::string run_plain_step(step const &one, std::vector<std::wstring> const &texts,
                           unsigned int number)
{
    ::SetLastError(untouched);
    switch (one.what) {
    case function::create_directory:
        return done_or_failed(::CreateDirectoryW(texts[0].c_str(), nullptr));
    case function::remove_directory:
        return done_or_failed(::RemoveDirectoryW(texts[0].c_str()));
    case function::get_attributes:
        return attributes(texts[0]);
    case function::get_full_path:
        return full_path(texts[0], number);
    case function::get_current_directory:
        return handed_over(number, [](DWORD room, wchar_t *buffer) {
            return ::GetCurrentDirectoryW(room, buffer);
        });
    case function::set_current_directory:
        return done_or_failed(::SetCurrentDirectoryW(texts[0].c_str()));
    case function::get_variable:
        return handed_over(number, [&](DWORD room, wchar_t *buffer) {
            return ::GetEnvironmentVariableW(texts[0].c_str(), buffer, room);
        });
    case function::set_variable:
        return set_variable(one, texts);
    default:
        throw std::invalid_argument("no plain step");
    }
}

std::string line_of(entry const &one, unsigned int number)
{
    std::string line =
        shown(one.pathname, number) + ' ' + std::to_string(one.attributes & compared_attributes);
    if (one.is_directory)
        return line;
    std::u16string const content(one.content.begin(), one.content.end());
    return line + ' ' + quoted(content) + ' ' + std::to_string(link_count(one.pathname));
}

} // namespace

std::string failed_with(std::uint32_t code)
{
    return code == untouched ? "failed, last error untouched" : "failed " + std::to_string(code);
}

std::string shown(std::wstring_view text, unsigned int number)
{
    std::wstring const name = folder_name(number);
    std::wstring result(text);
    for (std::size_t at; (at = result.find(name)) != std::wstring::npos;)
        result.replace(at, name.size(), 1, wchar_t{name_mark});
    return quoted(units(result));
}

std::wstring folder_name(unsigned int number)
{
    std::wstring const digits = std::to_wstring(number);
    return std::wstring(8 - std::min<std::size_t>(8, digits.size()), L'0') + digits;
}

std::wstring expand(std::u16string_view text, unsigned int number)
{
    std::wstring const folder = folder_above + folder_name(number);
    std::wstring result;
    for (char16_t const unit : text) {
        if (unit == folder_mark)
            result += folder;
        else if (unit == rooted_mark)
            result += folder.substr(2);
        else if (unit == name_mark)
            result += folder_name(number);
        else
            result += static_cast<wchar_t>(unit);
    }
    return result;
}

outcome run_sequence(sequence const &steps, unsigned int number)
{
    host const disk(number);
    outcome result;
    handle_slots slots;
    for (step const &one : steps) {
        std::vector<std::wstring> texts;
        for (std::u16string const &text : one.texts)
            texts.push_back(expand(text, number));
        result.directories.push_back(disk.current_directory());
        result.standing.push_back(disk.standing());
        bool const is_plain = !signature_of(one.what).needs_files;
        result.answers.push_back(is_plain ? run_plain_step(one, texts, number)
                                          : run_file_step(one, texts, slots, number));
    }
    slots.close_all();
    for (entry const &left : disk.entries())
        result.tree.push_back(line_of(left, number));
    return result;
}

} // namespace differential
