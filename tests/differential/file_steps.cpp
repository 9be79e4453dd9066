#include "differential/file_steps.hpp"

#include "differential/executor.hpp"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace differential {

namespace {

constexpr DWORD share_all = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

std::string done_or_failed(BOOL done)
{
    DWORD const code = ::GetLastError();
    return done ? "ok" : failed_with(code);
}

std::string quoted_bytes(std::string const &bytes)
{
    return quoted(std::u16string(bytes.begin(), bytes.end()));
}

/// A size of a directory means nothing.
std::string facts(DWORD attributes, DWORD size)
{
    std::string text = std::to_string(attributes & compared_attributes);
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? text : text + ' ' + std::to_string(size);
}

/// Opens, and tells a file that was made from one that was there where the
/// disposition says that the call does.
std::string write_file(step const &one, std::vector<std::wstring> const &texts)
{
    DWORD const disposition = one.numbers[0];
    HANDLE const file = ::CreateFileW(texts[0].c_str(), GENERIC_WRITE, 0, nullptr, disposition,
                                      one.numbers[1], nullptr);
    DWORD const code = ::GetLastError();
    if (file == INVALID_HANDLE_VALUE)
        return failed_with(code);
    std::string answer = "ok";
    if (disposition == CREATE_ALWAYS || disposition == OPEN_ALWAYS)
        answer += code == ERROR_ALREADY_EXISTS ? ", was there" : ", new";
    std::string const content(texts[1].begin(), texts[1].end());
    DWORD written = 0;
    if (!::WriteFile(file, content.data(), static_cast<DWORD>(content.size()), &written, nullptr))
        answer += ", writing " + failed_with(::GetLastError());
    answer += ", wrote " + std::to_string(written);
    ::CloseHandle(file);
    return answer;
}

std::string read_file(std::wstring const &text)
{
    HANDLE const file = ::CreateFileW(text.c_str(), GENERIC_READ, share_all, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD code = ::GetLastError();
    if (file == INVALID_HANDLE_VALUE)
        return failed_with(code);
    std::string content(1000, '#'); // no sequence writes as much
    DWORD length = 0;
    BOOL const done =
        ::ReadFile(file, content.data(), static_cast<DWORD>(content.size()), &length, nullptr);
    code = ::GetLastError();
    ::CloseHandle(file);
    if (!done)
        return "reading " + failed_with(code);
    content.resize(length);
    return "ok " + quoted_bytes(content);
}

std::string open_handle(step const &one, std::wstring const &text, handle_slots &slots)
{
    HANDLE &slot = slots[one.numbers[0]];
    if (slot != INVALID_HANDLE_VALUE)
        return "the slot is taken";
    ::SetLastError(0);
    slot = ::CreateFileW(text.c_str(), one.numbers[1], one.numbers[2], nullptr, one.numbers[3],
                         one.numbers[4], nullptr);
    return done_or_failed(slot != INVALID_HANDLE_VALUE);
}

std::string close_handle(HANDLE &slot)
{
    if (slot == INVALID_HANDLE_VALUE)
        return "the slot is empty";
    return done_or_failed(::CloseHandle(std::exchange(slot, INVALID_HANDLE_VALUE)));
}

std::string attributes_ex(std::wstring const &text)
{
    WIN32_FILE_ATTRIBUTE_DATA data;
    BOOL const done = ::GetFileAttributesExW(text.c_str(), GetFileExInfoStandard, &data);
    DWORD const code = ::GetLastError();
    return done ? "ok " + facts(data.dwFileAttributes, data.nFileSizeLow) : failed_with(code);
}

/// The entries in the order of their names: a disk has an order of its own.
std::string enumerate(std::wstring const &pattern, unsigned int number)
{
    WIN32_FIND_DATAW data;
    HANDLE const search = ::FindFirstFileExW(pattern.c_str(), FindExInfoBasic, &data,
                                             FindExSearchNameMatch, nullptr, 0);
    DWORD code = ::GetLastError();
    if (search == INVALID_HANDLE_VALUE)
        return failed_with(code);
    std::vector<std::string> lines;
    do {
        if (!is_of_the_system(data.cFileName))
            lines.push_back(shown(data.cFileName, number) + ' ' +
                            facts(data.dwFileAttributes, data.nFileSizeLow));
    } while (::FindNextFileW(search, &data));
    code = ::GetLastError();
    ::FindClose(search);
    std::sort(lines.begin(), lines.end());
    std::string answer = "ok";
    for (std::string const &line : lines)
        answer += " [" + line + ']';
    return code == ERROR_NO_MORE_FILES ? answer : answer + ", then " + failed_with(code);
}

} // namespace

void handle_slots::close_all()
{
    for (HANDLE &slot : handles_) {
        if (slot != INVALID_HANDLE_VALUE)
            ::CloseHandle(std::exchange(slot, INVALID_HANDLE_VALUE));
    }
}

std::string run_file_step(step const &one, std::vector<std::wstring> const &texts,
                          handle_slots &slots, unsigned int number)
{
    ::SetLastError(untouched);
    switch (one.what) {
    case function::write_file:
        return write_file(one, texts);
    case function::read_file:
        return read_file(texts[0]);
    case function::open_handle:
        return open_handle(one, texts[0], slots);
    case function::close_handle:
        return close_handle(slots[one.numbers[0]]);
    case function::delete_file:
        return done_or_failed(::DeleteFileW(texts[0].c_str()));
    case function::move_file:
        return done_or_failed(::MoveFileExW(texts[0].c_str(), texts[1].c_str(), one.numbers[0]));
    case function::copy_file:
        return done_or_failed(
            ::CopyFileW(texts[0].c_str(), texts[1].c_str(), one.numbers[0] != 0 ? TRUE : FALSE));
    case function::create_hard_link:
        return done_or_failed(::CreateHardLinkW(texts[0].c_str(), texts[1].c_str(), nullptr));
    case function::set_attributes:
        return done_or_failed(::SetFileAttributesW(texts[0].c_str(), one.numbers[0]));
    case function::get_attributes_ex:
        return attributes_ex(texts[0]);
    case function::enumerate:
        return enumerate(texts[0], number);
    default:
        throw std::invalid_argument("no step with files");
    }
}

unsigned int link_count(std::wstring const &pathname)
{
    HANDLE const file =
        ::CreateFileW((L"\\\\?\\" + pathname).c_str(), FILE_READ_ATTRIBUTES, share_all, nullptr,
                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    BY_HANDLE_FILE_INFORMATION facts_of_file{};
    if (file == INVALID_HANDLE_VALUE)
        throw std::runtime_error("a file of the tree can't be opened");
    BOOL const done = ::GetFileInformationByHandle(file, &facts_of_file);
    ::CloseHandle(file);
    if (!done)
        throw std::runtime_error("a file of the tree has no information");
    return facts_of_file.nNumberOfLinks;
}

} // namespace differential
