// Reads a text file of any pathname, and says why where it can't be read.
//
// Prints:
//     1: soup
//     fl:filesystem:PathNotFound: the name, or a directory on the way to it, isn't there

#include <fl/filesystem.hpp>

#include <iostream>
#include <string>

namespace fs = fl::filesystem;
using namespace fs::literals;

void show(fs::upath const &file)
{
    std::fstream in = fs::open(file, std::ios::in); // throws if it can't be opened
    int number = 0;
    for (std::string line; std::getline(in, line);)
        std::cout << ++number << ": " << line << '\n';
}

int main()
{
    try {
        show(u"reports/june.txt"_path);
        show(u"reports/august.txt"_path);
    } catch (fs::FsysExceptionBase const &failure) {
        std::string const line = fs::describe(failure); // with the pathname, in full
        std::cout << line.substr(0, line.find(": \"")) << '\n';
        return 1;
    }
    return 0;
}
