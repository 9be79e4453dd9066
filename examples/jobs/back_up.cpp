// Brings a second folder up to date: what is missing or older there is copied, and nothing else.
//
// Prints:
//     backup\june.txt: 4 bytes
//     backup\june.txt: 9 bytes

#include <fl/filesystem.hpp>

#include <chrono>
#include <filesystem>
#include <iostream>

namespace fs = fl::filesystem;
using namespace fs::literals;

void back_up(fs::upath const &from, fs::upath const &to)
{
    using options = std::filesystem::copy_options;
    fs::copy(from, to, options::recursive | options::update_existing);
}

int main()
{
    try {
        fs::upath const file(u"reports/june.txt"), kept(u"backup/june.txt");
        back_up(u"reports"_path, u"backup"_path);
        std::cout << kept << ": " << fs::file_size(kept) << " bytes\n";

        fs::resize_file(file, 9);
        fs::last_write_time(file, fs::last_write_time(kept) + std::chrono::seconds(10));
        back_up(u"reports"_path, u"backup"_path);
        std::cout << kept << ": " << fs::file_size(kept) << " bytes\n";
    } catch (std::exception const &failure) {
        std::cerr << fs::describe(failure) << '\n';
        return 1;
    }
    return 0;
}
