// Copies a folder with all that is below it, shows how far it has come, and can be stopped.
//
// Prints:
//     6 names copied
//     reports\2025\old.log is there twice

#include <fl/filesystem.hpp>

#include <cstdint>
#include <filesystem>
#include <iostream>

namespace fs = fl::filesystem;

int main()
{
    try {
        fs::upath const from(u"reports"), to(u"copy of reports");
        std::uint64_t names = 0;
        auto const show = [&names](fs::copy_progress const &now) {
            names = now.names; // now.from and now.to say which one it is
            return true;       // false would stop it
        };
        fs::copy(from, to, std::filesystem::copy_options::recursive, show);
        std::cout << names << " names copied\n";
        if (fs::exists(to / u"2025/old.log"))
            std::cout << from / u"2025/old.log" << " is there twice\n";
    } catch (std::exception const &failure) {
        std::cerr << fs::describe(failure) << '\n';
        return 1;
    }
    return 0;
}
