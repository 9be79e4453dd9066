// The code of docs/everyday.md. Nothing of it runs: it needs libraries that are not here.

#include <fl/filesystem.hpp>

#include <windows.h>

#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

// What the page needs of two libraries that aren't here, with their signatures.

namespace wil {

struct unique_hfile
{
    explicit unique_hfile(HANDLE) {}
    explicit operator bool() const { return true; }
};

} // namespace wil

struct QString
{
    static QString fromStdU16String(std::u16string const &) { return {}; }
    std::u16string toStdU16String() const { return {}; }
};

struct QFile
{
    explicit QFile(QString const &) {}
    QString fileName() const { return {}; }
};

namespace fs = fl::filesystem;

void clean_up(fs::upath const &folder);
void clean_up(fs::upath const &folder)
{
    fs::remove_all(folder / u"old");
}

void everyday_code(std::ostream &log);
void everyday_code(std::ostream &log)
{
    std::wstring const from_the_registry = L"C:\\data";
    std::string const from_a_file = "C:/data/caf\xC3\xA9"; // UTF-8

    fs::upath const folder(from_the_registry);
    fs::upath const menu = fs::upath::from_utf8(from_a_file) / u"menu.txt";
    fs::upath const backup = fs::upath(menu) += u".bak";

    std::string const utf8 = backup.string();
    std::wstring const wide = backup.wstring();

    if (folder == u"C:/data") // the native form of the text
        fs::create_directories(folder / u"old");
    fs::rename(menu, u"C:/data/old/menu.txt");
    fs::copy(u"C:/data/old", folder / u"older", std::filesystem::copy_options::recursive);

    std::uint64_t bytes = 0;
    for (fs::directory_entry const &entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_symlink() || entry.is_junction())
            log << entry << " leads to " << fs::read_symlink(entry) << '\n';
        else if (entry.is_regular_file())
            bytes += entry.file_size();
    }
    log << bytes << " bytes\n";

    fs::removal_report const report =
        fs::remove_all(folder / u"old", fs::removal_options().clear_read_only().keep_going());
    for (fs::failure const &left : report.failures())
        log << left.describe() << '\n';

    try {
        clean_up(folder);
    } catch (std::exception const &failure) {
        log << fs::describe(failure) << '\n';
    }

    auto const size = fs::attempt([&] { return fs::file_size(menu); });
    if (!size)
        log << size.error().describe() << '\n';

    std::ifstream reading(fs::to_standard(menu));

    std::fstream writing = fs::open(backup, std::ios::out | std::ios::binary);
    writing << "soup";

    fs::upath const temporary = std::filesystem::temp_directory_path();

    {
        std::wstring const name = fs::detail::make_native_access_form(menu.native());
        wil::unique_hfile file(::CreateFileW(name.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                             OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
        if (!file)
            fs::throw_last_error(::GetLastError(), menu); // as the library's operations fail
    }

    QFile file(QString::fromStdU16String(menu.native())); // Qt has prefixes of its own
    fs::upath const chosen(file.fileName().toStdU16String());
}
