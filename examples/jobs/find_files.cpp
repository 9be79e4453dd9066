// All files below a folder that have one of some extensions, in any case.
//
// Prints:
//     reports\2025\june.tmp
//     reports\2025\old.log

#include <fl/filesystem.hpp>

#include <iostream>
#include <set>
#include <string>

namespace fs = fl::filesystem;

std::u16string in_lower_case(std::u16string text)
{
    for (char16_t &unit : text)
        if (unit >= u'A' && unit <= u'Z')
            unit = static_cast<char16_t>(unit - u'A' + u'a');
    return text;
}

int main()
{
    try {
        std::set<std::u16string> const wanted{u"log", u"tmp"}; // an extension has no full stop
        std::set<fs::upath> found;
        for (fs::directory_entry const &entry : fs::recursive_directory_iterator(
                 u"reports", fs::directory_options::skip_permission_denied)) {
            if (entry.is_regular_file() &&
                wanted.count(in_lower_case(entry.path().extension())) != 0)
                found.insert(entry.path());
        }
        for (fs::upath const &file : found)
            std::cout << file << '\n';
    } catch (std::exception const &failure) {
        std::cerr << fs::describe(failure) << '\n';
        return 1;
    }
    return 0;
}
