#include "contest.hpp"

#include <fl/filesystem.hpp>

#include "raw_calls.hpp"

#include <filesystem>

namespace bench {

namespace {

namespace ours = fl::filesystem;
namespace standard = std::filesystem;
using fl::filesystem::upath;

constexpr auto recursive = standard::copy_options::recursive;

std::u16string units(std::wstring const &text)
{
    return std::u16string(text.begin(), text.end());
}

/// So many directories with so many files in each.
void make_tree(std::wstring const &top, int directories, int files)
{
    ::CreateDirectoryW(top.c_str(), nullptr);
    for (int directory = 0; directory < directories; ++directory) {
        std::wstring const below = top + L"\\directory-" + std::to_wstring(directory);
        ::CreateDirectoryW(below.c_str(), nullptr);
        for (int file = 0; file < files; ++file)
            raw::make_file(below + L"\\file-" + std::to_wstring(file) + L".txt");
    }
}

void remove_if_there(std::wstring const &top)
{
    std::wstring path = top;
    if (raw::attributes_of(path.c_str()) != INVALID_FILE_ATTRIBUTES)
        raw::remove_tree(path);
}

/// Each level of a pathname of 21, from the first behind the place.
std::vector<std::wstring> levels_below(std::wstring const &top)
{
    std::vector<std::wstring> levels;
    std::wstring path = top;
    for (int level = 1; level <= 21; ++level)
        levels.push_back(path += L"\\level-" + std::to_wstring(level));
    return levels;
}

/// All names of a pathname from the drive's root on, ahead of `\`.
std::vector<std::wstring> all_levels_of(std::wstring const &path)
{
    std::vector<std::wstring> levels;
    for (std::size_t end = path.find(L'\\', 3); end != path.npos; end = path.find(L'\\', end + 1))
        levels.push_back(path.substr(0, end));
    levels.push_back(path);
    return levels;
}

void add_queries(std::vector<work> &works, std::wstring const &folder)
{
    std::wstring const file = folder + L"\\a-file.txt";
    std::wstring const missing = folder + L"\\no-such-file.txt";
    raw::make_file(file);
    upath const path(units(file));
    upath const lost(units(missing));
    auto const query = [](std::wstring const &name) {
        return times([name] {
            raw::expand(name.c_str());
            keep(raw::attributes_of(name.c_str()));
        });
    };
    works.push_back({"status of a file",
                     1.10,
                     {{"floor", query(file)},
                      {"ours", times([path] { keep(ours::status(path)); })},
                      {"std", times([p = standard::path(file)] { keep(standard::status(p)); })}}});
    works.push_back(
        {"status_express_light",
         1.03,
         {{"floor", times([file] { keep(raw::attributes_of(file.c_str())); })},
          {"ours", times([path] { keep(ours::status_express_light(path.native())); })}}});
    works.push_back({"exists",
                     1.08,
                     {{"floor", query(file)},
                      {"ours", times([path] { keep(ours::exists(path)); })},
                      {"std", times([p = standard::path(file)] { keep(standard::exists(p)); })}}});
    works.push_back(
        {"status of a missing name",
         1.05,
         {{"floor", query(missing)},
          {"ours", times([lost] { keep(ours::status(lost)); })},
          {"std", times([p = standard::path(missing)] { keep(standard::status(p)); })}}});
}

void add_deep_pathname(std::vector<work> &works, std::wstring const &folder)
{
    std::wstring const top = folder + L"\\deep";
    std::vector<std::wstring> const levels = levels_below(top);
    std::vector<std::wstring> const all = all_levels_of(levels.back());
    auto const clear = [top] {
        remove_if_there(top);
        ::CreateDirectoryW(top.c_str(), nullptr);
    };
    upath const deepest(units(levels.back()));
    standard::path const standard_deepest(levels.back());
    works.push_back(
        {"create_directories, 21 levels",
         1.02,
         {{"floor", times([all] {
               raw::expand(all.back().c_str());
               for (std::wstring const &level : all)
                   if (!::CreateDirectoryW(level.c_str(), nullptr))
                       keep(::GetFileAttributesW(level.c_str()));
           }),
           clear},
          {"ours", times([deepest] { ours::create_directories(deepest); }), clear},
          {"std", times([standard_deepest] { standard::create_directories(standard_deepest); }),
           clear}}});

    std::wstring const still = folder + L"\\still";
    ::CreateDirectoryW(still.c_str(), nullptr);
    std::vector<std::wstring> const there = levels_below(still);
    for (std::wstring const &level : there)
        ::CreateDirectoryW(level.c_str(), nullptr);
    std::vector<std::wstring> asked;
    for (std::wstring const &level : all_levels_of(there.back()))
        asked.push_back(L"\\\\?\\" + level);
    asked.push_back(asked.back()); // the whole of it once more
    works.push_back(
        {"canonical, 21 levels",
         1.08,
         {{"floor", times([asked, path = there.back()] {
               raw::expand(path.c_str());
               for (std::wstring const &level : asked)
                   keep(raw::attributes_of(level.c_str()));
           })},
          {"ours", times([path = upath(units(there.back()))] { keep(ours::canonical(path)); })},
          {"std",
           times([path = standard::path(there.back())] { keep(standard::canonical(path)); })}}});
}

void add_trees(std::vector<work> &works, std::wstring const &folder, int share)
{
    std::wstring const tree = folder + L"\\tree";
    auto const plant = [tree, share] { make_tree(tree, 50 / share, 40); };
    works.push_back(
        {"remove_all, 2,000 files in 50 directories",
         1.03,
         {{"floor", times([tree] {
               std::wstring path = tree;
               raw::remove_tree(path);
           }),
           plant},
          {"ours", times([path = upath(units(tree))] { ours::remove_all(path); }), plant},
          {"std", times([path = standard::path(tree)] { standard::remove_all(path); }), plant}}});

    std::wstring const source = folder + L"\\source";
    std::wstring const target = folder + L"\\target";
    make_tree(source, 20 / share, 25);
    auto const clear = [target] { remove_if_there(target); };
    works.push_back({"copy, 500 files in 20 directories",
                     1.03,
                     {{"floor", times([source, target] {
                           std::wstring from = source;
                           std::wstring to = target;
                           raw::copy_tree(from, to);
                       }),
                       clear},
                      {"ours", times([from = upath(units(source)), to = upath(units(target))] {
                           ours::copy(from, to, recursive);
                       }),
                       clear},
                      {"std", times([from = standard::path(source), to = standard::path(target)] {
                           standard::copy(from, to, recursive);
                       }),
                       clear}}});
}

void add_listing(std::vector<work> &works, std::wstring const &folder, int share)
{
    std::wstring const wide = folder + L"\\wide";
    ::CreateDirectoryW(wide.c_str(), nullptr);
    for (int file = 0; file < 10000 / share; ++file)
        raw::make_file(wide + L"\\a-file-" + std::to_wstring(file) + L".txt");
    works.push_back(
        {"listing of 10,000 entries with type and size",
         1.05,
         {{"floor", times([pattern = wide + L"\\*"] {
               std::uint64_t sum = 0;
               raw::search(pattern.c_str(), FIND_FIRST_EX_LARGE_FETCH,
                           [&](WIN32_FIND_DATAW const &data) {
                               bool const is_directory =
                                   (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
                               sum += is_directory ? 0 : data.nFileSizeLow;
                           });
               keep(sum);
           })},
          {"ours", times([path = upath(units(wide))] {
               std::uint64_t sum = 0;
               for (ours::directory_entry const &entry : ours::directory_iterator(path))
                   sum += entry.is_directory() ? 0 : entry.file_size();
               keep(sum);
           })},
          {"std", times([path = standard::path(wide)] {
               std::uint64_t sum = 0;
               for (standard::directory_entry const &entry : standard::directory_iterator(path))
                   sum += entry.is_directory() ? 0 : entry.file_size();
               keep(sum);
           })}}});
}

} // namespace

std::vector<work> disk_works(std::wstring const &folder, bool is_smoke)
{
    int const share = is_smoke ? 20 : 1;
    std::vector<work> works;
    add_queries(works, folder);
    add_deep_pathname(works, folder);
    add_trees(works, folder, share);
    add_listing(works, folder, share);
    return works;
}

} // namespace bench
