// A folder of its own for what is temporary, which goes when the program is done with it, also
// after a failure.
//
// Prints:
//     it is there
//     it is gone

#include <fl/filesystem.hpp>

#include <iostream>
#include <random>
#include <string>

namespace fs = fl::filesystem;

class temporary_folder
{
public:
    temporary_folder()
    {
        std::random_device random;
        for (;;) {
            path_ = fs::temp_directory_path() / fs::from_utf8("job-" + std::to_string(random()));
            auto const made = fs::attempt([&] { fs::create_directory(path_); });
            if (made)
                return;
            if (made.error().id() != fs::fsys_excp_file_exists_error)
                made.value(); // throws what it was
        }
    }
    ~temporary_folder()
    {
        static_cast<void>(fs::attempt([&] { fs::remove_all(path_); }));
    }
    temporary_folder(temporary_folder const &) = delete;
    temporary_folder &operator=(temporary_folder const &) = delete;

    fs::upath const &path() const { return path_; }

private:
    fs::upath path_;
};

int main()
{
    try {
        fs::upath name;
        {
            temporary_folder const folder;
            name = folder.path();
            fs::create_directories(name / u"a/b");
            std::cout << (fs::is_directory(name) ? "it is there\n" : "it isn't there\n");
        }
        std::cout << (fs::exists(name) ? "it isn't gone\n" : "it is gone\n");
    } catch (std::exception const &failure) {
        std::cerr << fs::describe(failure) << '\n';
        return 1;
    }
    return 0;
}
