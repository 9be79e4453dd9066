#include <fl/filesystem.hpp>

#include <iostream>

namespace fs = fl::filesystem;

int main()
{
    try {
        fs::upath const folder(u"reports/" + std::u16string(150, u'a')); // a "/" will do
        fs::ensure_directories(folder / std::u16string(150, u'b'));      // beyond 260 units
        for (auto const &entry : fs::recursive_directory_iterator(u"reports"))
            std::cout << "made a pathname of " << entry.path().native().size() << " units\n";
        fs::rename(u"reports/draft.txt", u"reports/final.txt"); // isn't there
    } catch (std::exception const &failure) {
        std::cout << fs::describe(failure) << '\n'; // says which pathname
        return 1;
    }
    return 0;
}
