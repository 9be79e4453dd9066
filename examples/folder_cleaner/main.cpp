// Cleans up a folder: tells what is in it, moves files out of it that are too deep for most
// programs, or removes it. (Elsewhere than on Windows it looks at the library's Windows machine
// in memory, whose disk is empty.)

#include "cleaner.hpp"

#include <iostream>

#ifdef _WIN32
// Arguments in the system's own characters: main's would be cut to those of a code page.
int wmain(int count, wchar_t *arguments[])
{
    return cleaner::run({arguments + 1, arguments + count}, std::cout, std::cerr);
}
#else
int main(int count, char *arguments[])
{
    std::vector<fl::filesystem::upath> paths;
    for (int i = 1; i < count; ++i)
        paths.push_back(fl::filesystem::upath::from_utf8(arguments[i]));
    return cleaner::run(paths, std::cout, std::cerr);
}
#endif
