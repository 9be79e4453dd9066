// Makes a folder and those above it, as deep as need be, whether or not they are there.
//
// Prints:
//     made
//     there already
//     fl:filesystem:FileExistsError: something of that name is there already: "reports\june.txt\x"

#include <fl/filesystem.hpp>

#include <iostream>

namespace fs = fl::filesystem;

int main()
{
    try {
        fs::upath folder(u"reports/2026");
        for (int level = 0; level < 5; ++level)
            folder /= std::u16string(100, u'a'); // 500 units and more
        for (int times = 0; times < 2; ++times)
            std::cout << (fs::ensure_directories(folder) ? "made\n" : "there already\n");
        fs::ensure_directories(u"reports/june.txt/x"); // below a file
    } catch (fs::FsysExceptionBase const &failure) {
        std::cout << fs::describe(failure) << '\n';
        return 1;
    }
    return 0;
}
