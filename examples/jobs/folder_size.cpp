// How much a folder holds, with all that is below it, and how much room its disk has. Links are
// told apart and not entered, so nothing is counted twice.
//
// Prints:
//     4 files, 13 bytes
//     there is room for as much again

#include <fl/filesystem.hpp>

#include <cstdint>
#include <iostream>

namespace fs = fl::filesystem;

int main()
{
    try {
        fs::upath const folder(u"reports");
        std::uint64_t files = 0, bytes = 0;
        for (fs::directory_entry const &entry : fs::recursive_directory_iterator(folder)) {
            if (entry.is_symlink() || !entry.is_regular_file())
                continue;
            ++files;
            bytes += entry.file_size();
        }
        std::cout << files << " files, " << bytes << " bytes\n";
        if (fs::space(folder).available >= bytes)
            std::cout << "there is room for as much again\n";
    } catch (std::exception const &failure) {
        std::cerr << fs::describe(failure) << '\n';
        return 1;
    }
    return 0;
}
