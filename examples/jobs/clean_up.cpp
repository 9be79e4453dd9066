// Removes what isn't needed any more: a folder with all that is in it, and what was never there
// is no failure. Of links only the link goes. (With removal_options it also goes on after
// failures: see examples/folder_cleaner.)
//
// Prints:
//     reports\2025 is gone
//     reports\2024 was not there

#include <fl/filesystem.hpp>

#include <iostream>

namespace fs = fl::filesystem;

int main()
{
    bool all_gone = true;
    for (fs::upath const &old : {fs::upath(u"reports/2025"), fs::upath(u"reports/2024")}) {
        auto const removed = fs::attempt([&] { fs::remove_all(old); });
        if (removed) {
            std::cout << old << " is gone\n";
        } else if (removed.error().id() == fs::fsys_excp_path_not_found) {
            std::cout << old << " was not there\n";
        } else {
            std::cerr << removed.error().describe() << '\n';
            all_gone = false;
        }
    }
    return all_gone ? 0 : 1;
}
