#include "flfs/process.hpp"

#include <fl/filesystem/utf8.hpp>

#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

#include <memory>
#include <new>
#include <stdio.h>

namespace flfs {

namespace {

struct local_free
{
    void operator()(wchar_t **block) const noexcept { ::LocalFree(block); }
};

} // namespace

// The wide command line: `argv` comes through the code page, which has neither all
// of Unicode nor unpaired surrogates.
std::vector<std::string> process_arguments(int, char **)
{
    int count = 0;
    std::unique_ptr<wchar_t *, local_free> const words(
        ::CommandLineToArgvW(::GetCommandLineW(), &count));
    if (!words)
        throw std::bad_alloc();
    std::vector<std::string> arguments;
    for (int at = 1; at < count; ++at) {
        std::wstring_view const word = words.get()[at];
        arguments.push_back(fl::filesystem::to_utf8(std::u16string(word.begin(), word.end())));
    }
    return arguments;
}

bool has_terminal()
{
    DWORD mode = 0;
    return ::GetConsoleMode(::GetStdHandle(STD_ERROR_HANDLE), &mode) != 0;
}

process_streams::process_streams() : former_code_page_(::GetConsoleOutputCP())
{
    ::SetConsoleOutputCP(CP_UTF8);
    // the text mode would put a carriage return ahead of every line feed
    ::_setmode(::_fileno(stdout), _O_BINARY);
    ::_setmode(::_fileno(stderr), _O_BINARY);
}

process_streams::~process_streams()
{
    if (former_code_page_ != 0) // 0: there is no console
        ::SetConsoleOutputCP(former_code_page_);
}

} // namespace flfs
