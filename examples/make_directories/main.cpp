// Makes a chain of directories below the current one, longer than the 260 units
// that most of Windows stops at, and then shows how a failure says what it is
// about.

#include <fl/filesystem.hpp>

#include <cstdio>

namespace fs = fl::filesystem;

int main()
{
    fs::upath chain = fs::absolute(u"fl-example");
    for (char16_t name = u'a'; name <= u'j'; ++name)
        chain /= std::u16string(40, name);

    try {
        fs::create_directories(chain);
        std::printf("made a directory whose pathname has %zu units\n", chain.native().size());
        fs::create_directories(chain); // a second time: it is there already
    } catch (fs::FileExistsError const &failure) {
        bool const named = failure.get_path_name() == chain.native();
        std::printf("%s, about the very pathname: %s\n", failure.what(), named ? "yes" : "no");
        return named ? 0 : 1;
    } catch (fs::FsysExceptionBase const &failure) {
        std::printf("%s, code %u\n", failure.what(), failure.get_error_code());
        return 1;
    }
    return 1;
}
