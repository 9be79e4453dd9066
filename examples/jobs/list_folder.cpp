// What is in a folder: type, size and name of each entry.
//
// Prints:
//     2025, a folder
//     july.txt, 5 bytes
//     june.txt, 4 bytes

#include <fl/filesystem.hpp>

#include <algorithm>
#include <iostream>
#include <vector>

namespace fs = fl::filesystem;

int main()
{
    try {
        // what the listing told takes no other call; the disk's order is its own
        std::vector<fs::directory_entry> entries(fs::directory_iterator(u"reports"), {});
        std::sort(entries.begin(), entries.end());
        for (fs::directory_entry const &entry : entries) {
            std::cout << fs::to_utf8(entry.filename()) << ", ";
            if (entry.is_directory())
                std::cout << "a folder\n";
            else
                std::cout << entry.file_size() << " bytes\n";
        }
    } catch (std::exception const &failure) {
        std::cerr << fs::describe(failure) << '\n';
        return 1;
    }
    return 0;
}
