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

HANDLE handle_of(stream which)
{
    return ::GetStdHandle(which == stream::out ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
}

/// 0 for what is no console.
DWORD console_mode(stream which)
{
    DWORD mode = 0;
    return ::GetConsoleMode(handle_of(which), &mode) ? mode : 0;
}

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

bool is_terminal(stream which)
{
    return console_mode(which) != 0;
}

bool takes_colours(stream which)
{
    constexpr DWORD refused_size = 1; // without room: is it set to something?
    return ::GetEnvironmentVariableW(L"NO_COLOR", nullptr, 0) <= refused_size &&
           (console_mode(which) & ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

process_streams::process_streams() : former_code_page_(::GetConsoleOutputCP())
{
    ::SetConsoleOutputCP(CP_UTF8);
    for (stream const which : {stream::out, stream::err}) {
        DWORD const mode = console_mode(which);
        constexpr DWORD colours = ENABLE_PROCESSED_OUTPUT | ENABLE_VIRTUAL_TERMINAL_PROCESSING;
        // Windows ahead of 10 refuses, and shows none
        if (mode != 0 && ::SetConsoleMode(handle_of(which), mode | colours))
            former_modes_[static_cast<int>(which)] = mode;
    }
    // the text mode would put a carriage return ahead of every line feed
    ::_setmode(::_fileno(stdout), _O_BINARY);
    ::_setmode(::_fileno(stderr), _O_BINARY);
}

process_streams::~process_streams()
{
    for (stream const which : {stream::out, stream::err})
        if (unsigned long const mode = former_modes_[static_cast<int>(which)]; mode != 0)
            ::SetConsoleMode(handle_of(which), mode);
    if (former_code_page_ != 0) // 0: there is no console
        ::SetConsoleOutputCP(former_code_page_);
}

} // namespace flfs
