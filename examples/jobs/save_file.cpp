// Saves a file so that nobody ever sees half of it: what is new is written beside it and renamed.
//
// Prints:
//     june.txt has 11 bytes, and nothing is left beside it

#include <fl/filesystem.hpp>

#include <iostream>
#include <string>

namespace fs = fl::filesystem;

void save(fs::upath const &file, std::string const &content)
{
    fs::upath const fresh = fs::upath(file) += u".new"; // on the same volume
    {
        std::fstream out = fs::open(fresh, std::ios::out | std::ios::binary | std::ios::trunc);
        out << content;
        out.close(); // what couldn't be written shows here
        if (!out)
            throw fs::SystemError(112, fresh.native()); // the disk is full, most often
    }
    fs::rename(fresh, file);
}

int main()
{
    try {
        fs::upath const file(u"reports/june.txt");
        save(file, "more soup!\n");
        std::cout << fs::to_utf8(file.filename()) << " has " << fs::file_size(file)
                  << " bytes, and "
                  << (fs::exists(u"reports/june.txt.new") ? "something" : "nothing")
                  << " is left beside it\n";
    } catch (std::exception const &failure) {
        std::cerr << fs::describe(failure) << '\n';
        return 1;
    }
    return 0;
}
