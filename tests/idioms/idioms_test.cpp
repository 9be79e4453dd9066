// What people write who know std::filesystem or Boost's: a row for each idiom, which compiles
// or is refused for a reason. Nothing of it runs; what each call does is tested where it
// belongs.

#include <fl/filesystem.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace {

namespace fs = fl::filesystem;
using namespace fl::filesystem;
using namespace fl::filesystem::literals;
using options = std::filesystem::copy_options;
using std::chrono::system_clock;

// Callbacks.
bool goes_on(copy_progress const &)
{
    return true;
}
bool shows(removal_progress const &now)
{
    return now.removed < 100;
}
using says_nothing = void (*)(copy_progress const &);

struct refusal
{
    char const *written;
    bool compiles;
    char const *why;
};

/// Whether what a row says can be written with these types.
template <typename Row>
constexpr bool can_be_written(Row)
{
    return std::is_invocable_v<Row, upath *, std::u16string *, std::string *,
                               std::filesystem::path *>;
}

// The names in a row are those below, of types that only the row's own template knows.
#define REFUSED(written, why, ...)                                                                 \
    {                                                                                              \
        written,                                                                                   \
            can_be_written([]<typename upath, typename units, typename bytes, typename standard>(  \
                upath *, units *, bytes *,                                                         \
                standard *) requires requires(upath p, upath q, units text, bytes utf8,            \
                                              standard other,                                      \
                                              std::istream in) { __VA_ARGS__; } {}),               \
            why                                                                                    \
    }

/// An entry, of a type that depends on the row's own.
template <typename Path>
using entry_of = std::conditional_t<std::is_void_v<Path>, void, directory_entry>;

constexpr refusal refused[] = {
    REFUSED("upath path = u\"C:/dir\"",
            "a call with a literal could mean the path's or the text's overload; upath "
            "path(u\"C:/dir\") or u\"C:/dir\"_path",
            requires std::is_convertible_v<typename units::value_type const *, upath>),
    REFUSED("upath(\"C:/dir\")", "in which encoding? upath::from_utf8(\"C:/dir\")",
            upath(utf8.c_str())),
    REFUSED("upath(std::string)", "in which encoding? upath::from_utf8", upath(utf8)),
    REFUSED("p / \"name\"", "in which encoding? p / u\"name\"", p / utf8.c_str()),
    REFUSED("p == \"C:/dir\"", "in which encoding? p == u\"C:/dir\"", p == utf8.c_str()),
    REFUSED("exists(\"C:/dir\")", "in which encoding? exists(u\"C:/dir\")",
            fs::exists(utf8.c_str())),
    REFUSED("p.replace_extension(\".txt\")", "in which encoding? u\".txt\"",
            p.replace_extension(utf8.c_str())),
    REFUSED("upath(nullptr)", "no text", upath(nullptr)),
    REFUSED("upath(u\"C:/dir\", u\"name\")",
            "the second text would be the flag; upath(u\"C:/dir\") / u\"name\"",
            upath(text.c_str(), text.c_str())),
    REFUSED("upath(first, last)", "pointers would be a text and the flag; upath(text(first, last))",
            upath(text.data(), text.data() + 1)),
    REFUSED("std::u16string text = p",
            "operations take either, so paths that become texts would be ambiguous; p.native()",
            requires std::is_convertible_v<upath, units>),
    REFUSED("u\"C:/dir\" / p", "a path stands on the left: u\"C:/dir\"_path / p", text.c_str() / p),
    REFUSED("p.parent_path() / u\"name\"", "parent_path() is a text; p.parent() / u\"name\"",
            p.parent_path() / text.c_str()),
    REFUSED("p.parent_path().parent_path()", "parent_path() is a text; p.parent().parent()",
            p.parent_path().parent_path()),
    REFUSED("p.filename().string()", "filename() is a text; to_utf8(p.filename())",
            p.filename().string()),
    REFUSED("p.replace_extension()",
            "an empty extension changes nothing here; p.remove_extension()", p.replace_extension()),
    REFUSED("p.make_preferred()", "a path is always in native form", p.make_preferred()),
    REFUSED("p.lexically_normal()",
            "what `..` leads to behind a link isn't in the text; absolute, canonical, "
            "weakly_canonical",
            p.lexically_normal()),
    REFUSED("p.lexically_relative(q)", "as before; relative(p, q)", p.lexically_relative(q)),
    REFUSED("p.lexically_proximate(q)", "as before; relative(p, q)", p.lexically_proximate(q)),
    REFUSED("p.append(u\"name\")", "p /= u\"name\"", p.append(text)),
    REFUSED("p.concat(u\".bak\")", "p += u\".bak\"", p.concat(text)),
    REFUSED("p.assign(text)", "p = text", p.assign(text)),
    REFUSED("if (p)", "whether it is empty, or exists? !p.empty(), exists(p)",
            requires std::is_constructible_v<bool, upath>),
    REFUSED("std::cin >> p", "blanks belong to names, and which encoding? getline and from_utf8",
            in >> p),
    REFUSED("std::ifstream(p)", "opens what the system makes of it; to_standard(p) or open(p)",
            requires std::is_constructible_v<std::ifstream, upath>),
    REFUSED("std::filesystem::exists(p)", "the library's own finds longer names; to_standard(p)",
            std::filesystem::exists(p)),
    REFUSED("standard = p", "a path for showing or one for opening? to_standard(p), p.wstring()",
            other = p),
    REFUSED("exists(p, error_code)", "failures are exceptions, with the pathname in them",
            fs::exists(p, std::declval<std::error_code &>())),
    REFUSED("file_size(p, error_code)", "attempt([&] { return file_size(p); })",
            file_size(p, std::declval<std::error_code &>())),
    REFUSED("directory_iterator(p, error_code)", "attempt, or skip_permission_denied",
            directory_iterator(p, std::declval<std::error_code &>())),
    REFUSED("rename(p, nullptr)", "no text", fs::rename(p, nullptr)),
    REFUSED("if (create_directory(p))",
            "one that is there is a FileExistsError; ensure_directories(p)",
            bool(fs::create_directory(p))),
    REFUSED("if (create_directories(p))",
            "one that is there is a FileExistsError; ensure_directories(p)",
            bool(fs::create_directories(p))),
    REFUSED("if (remove(p))", "what isn't there is a PathNotFound; attempt", bool(fs::remove(p))),
    REFUSED("count = remove_all(p)", "remove_all(p, removal_options()).removed()",
            std::uint64_t(fs::remove_all(p))),
    REFUSED("remove_all(p, callback)", "remove_all(p, removal_options().on_progress(callback))",
            fs::remove_all(p, shows)),
    REFUSED("copy(p, q, options, [](copy_progress const &) {})", "is it to go on?",
            fs::copy(p, q, options::none, says_nothing())),
    REFUSED("last_write_time(p, std::filesystem::last_write_time(other))",
            "another clock, which begins elsewhere on each system; last_write_time(upath(other))",
            fs::last_write_time(p, std::filesystem::last_write_time(other))),
    REFUSED("is_block_file(p)", "nothing here is one; is_other(p)", is_block_file(p)),
    REFUSED("proximate(p, q)", "relative(p, q) throws, or tells the absolute pathname",
            proximate(p, q)),
    REFUSED("std::string text = attempt(...)", "there may be none; *attempt(...), value_or",
            requires std::is_convertible_v<outcome<bytes>, bytes>),
    REFUSED("entry.replace_filename(u\"name\")",
            "an entry is what was found; rename, directory_entry",
            entry_of<upath>().replace_filename(text)),
    REFUSED("entry.assign(p)", "entry = directory_entry(p)", entry_of<upath>().assign(p)),
    REFUSED("directory_entry entry = p", "asks the disk; directory_entry(p)",
            requires std::is_convertible_v<upath, directory_entry>),
    REFUSED("entry.path() = p", "as before", entry_of<upath>().path() = p),
    REFUSED("entry.hard_link_count()", "no listing tells it; hard_link_count(entry)",
            entry_of<upath>().hard_link_count()),
    REFUSED("std::u16string text = entry", "entry.path().native(), entry.filename()",
            requires std::is_convertible_v<entry_of<upath>, units>),
};

TEST(Idioms, RefusedOnesDoNotCompile)
{
    for (refusal const &row : refused)
        EXPECT_FALSE(row.compiles) << row.written << ": " << row.why;
}

// That a row fails for what it says, and not for how rows are written.
constexpr refusal written_otherwise[] = {
    REFUSED("", "", p / text.c_str()),
    REFUSED("", "", upath(text)),
    REFUSED("", "", upath(other)),
    REFUSED("", "", p == text.c_str()),
    REFUSED("", "", p.parent() / text.c_str()),
    REFUSED("", "", p.remove_extension()),
    REFUSED("", "", fs::exists(text.c_str())),
    REFUSED("", "", std::filesystem::exists(to_standard(p))),
    REFUSED("", "", other = to_standard(p)),
    REFUSED("", "", requires std::is_convertible_v<units, upath>),
    REFUSED("", "", bool(fs::ensure_directories(p))),
    REFUSED("", "", std::uint64_t(fs::remove_all(p, removal_options()).removed())),
    REFUSED("", "", fs::remove_all(p, removal_options().on_progress(shows))),
    REFUSED("", "", fs::copy(p, q, options::none, goes_on)),
    REFUSED("", "", fs::last_write_time(p, last_write_time(upath(other)))),
    REFUSED("", "", is_other(p)),
    REFUSED("", "", relative(p, q)),
    REFUSED("", "", file_size(p)),
    REFUSED("", "", directory_iterator(p, directory_options::none)),
    REFUSED("", "", entry_of<upath>() = directory_entry(p)),
    REFUSED("", "", hard_link_count(entry_of<upath>())),
    REFUSED("", "", units(entry_of<upath>().filename())),
};

TEST(Idioms, WrittenOtherwiseDoCompile)
{
    for (refusal const &row : written_otherwise)
        EXPECT_TRUE(row.compiles) << "row " << &row - written_otherwise;
}

#undef REFUSED

// What the rows speak of.
upath p, q;
std::u16string text;
std::u16string_view view;
std::wstring wide;
std::wstring_view wide_view;
std::string utf8;
std::filesystem::path standard;
std::vector<upath> paths;
wchar_t *argv[] = {nullptr, nullptr};
std::ostream &out = std::cout;
std::wostream &wide_out = std::wcout;
file_status record;
directory_entry found;

template <typename Value>
void use(Value const &)
{
}

struct idiom
{
    char const *written;
    void (*compiled)();
};

// An expression, one with the type of its result, and statements. The formatter doesn't know that a
// row is code.
// clang-format off
#define GIVES(...) {#__VA_ARGS__, [] { static_cast<void>(__VA_ARGS__); }}
#define YIELDS(type, ...)                                                                          \
    {#__VA_ARGS__, [] {                                                                            \
         static_assert(std::is_same_v<decltype(__VA_ARGS__), type>);                               \
         static_cast<void>(__VA_ARGS__);                                                           \
     }}
#define DOES(...) {#__VA_ARGS__, [] { __VA_ARGS__; }}

constexpr idiom accepted[] = {
    // a path of this and that
    DOES(upath path; use(path)),
    DOES(upath path(u"C:/dir"); use(path)),
    DOES(upath path{u"C:/dir"}; use(path)),
    DOES(upath path = {u"C:/dir"}; use(path)),
    DOES(auto path = u"C:/dir"_path; use(path)),
    DOES(upath path = text; use(path)),
    DOES(upath path(text + u".txt"); use(path)),
    DOES(upath path = view; use(path)),
    DOES(upath path = wide; use(path)),
    GIVES(upath(wide_view)),
    GIVES(upath(L"C:/dir")),
    GIVES(upath(argv[1])),
    DOES(upath path = standard; use(path)),
    GIVES(upath::from_utf8("C:/dir")),
    GIVES(upath::from_utf8(utf8)),
    GIVES(upath::from_utf8(u8"C:/dir")),
    GIVES(upath::from_utf8(standard.u8string())),
    DOES(upath copied = p; upath moved = std::move(copied); use(moved)),
    DOES(std::vector<upath> several{p, q, upath(u"x")}; use(several)),
    DOES(paths.emplace_back(u"x")),
    DOES(paths.push_back(text)),
    DOES(std::optional<upath> maybe; maybe = p; use(maybe)),
    DOES(upath element = *p.begin(); use(element)),

    // assigned
    GIVES(p = u"C:/dir"),
    GIVES(p = text),
    GIVES(p = view),
    GIVES(p = wide),
    GIVES(p = standard),
    GIVES(p = q),
    GIVES(p = u"C:/dir"_path),

    // joined and written behind
    GIVES(p / u"name"),
    GIVES(p / text),
    GIVES(p / view),
    GIVES(p / wide),
    GIVES(p / q),
    GIVES(p / standard),
    GIVES(p / u"a" / u"b" / text),
    GIVES(upath(u"C:/") / u"dir"),
    GIVES(text / p),
    GIVES(p /= u"name"),
    GIVES(p /= text),
    GIVES(p /= view),
    GIVES(p /= q),
    GIVES(p += u".bak"),
    GIVES(p += text),
    GIVES(p += q),
    GIVES(upath(p.native() + u".bak")),
    GIVES(p.parent() / (p.stem() + u"-1." + p.extension())),

    // changed
    DOES(p.clear()),
    GIVES(p.remove_filename()),
    GIVES(p.replace_filename(u"name")),
    GIVES(p.replace_filename(q.filename())),
    GIVES(p.replace_extension(u".txt")),
    GIVES(p.replace_extension(u"txt")),
    GIVES(p.replace_extension(q.extension())),
    GIVES(p.remove_extension()),
    GIVES(upath(p).replace_extension(u"txt")),
    DOES(p.swap(q)),
    DOES(swap(p, q)),
    DOES(std::swap(p, q)),

    // taken apart
    GIVES(p.root_name() + p.root_directory()),
    GIVES(p.root_path()),
    GIVES(p.relative_path()),
    GIVES(p.parent_path()),
    GIVES(upath(p.parent_path()) / u"name"),
    GIVES(p.parent().parent()),
    GIVES(p.filename() == u"name"),
    GIVES(p.stem()),
    GIVES(p.extension() == u"txt"),
    GIVES(p.has_root_name() || p.has_root_directory() || p.has_root_path()),
    GIVES(p.has_relative_path() || p.has_parent_path()),
    GIVES(p.has_filename() || p.has_stem() || p.has_extension()),
    GIVES(p.is_absolute() || p.is_relative() || p.empty()),
    DOES(for (auto const &element : p) use(element)),
    GIVES(std::distance(p.begin(), p.end())),
    GIVES(std::find(p.begin(), p.end(), u"dir") != p.end()),
    GIVES(std::vector<std::u16string>(p.begin(), p.end())),
    GIVES(std::mismatch(p.begin(), p.end(), q.begin(), q.end())),

    // as text
    GIVES(p.native().size()),
    GIVES(p.c_str()),
    GIVES(p.u16string()),
    GIVES(std::move(q).u16string()),
    GIVES(p.wstring().c_str()),
    GIVES(p.string() + "\n"),
    GIVES(p.u8string()),
    GIVES(p.generic_string()),
    GIVES(p.generic_u16string()),
    DOES(std::u16string_view seen = p.native(); use(seen)),
    GIVES(to_utf8(text)),
    GIVES(from_utf8(utf8)),
    GIVES(out << p << '\n'),
    GIVES(wide_out << p << L'\n'),
    GIVES(out << status(p)),
    DOES(for (auto const &path : paths) out << path << '\n'),

    // compared and kept
    GIVES(p == q || p != q),
    GIVES(p < q || p <= q || p > q || p >= q),
    GIVES(p.compare(q) < 0),
    GIVES(p == u"C:/dir"),
    GIVES(u"C:/dir" != p),
    GIVES(p == text || text == p),
    GIVES(p == view),
    GIVES(p == wide),
    GIVES(p == standard),
    DOES(std::sort(paths.begin(), paths.end())),
    GIVES(std::find(paths.begin(), paths.end(), u"C:/dir")),
    DOES(std::set<upath> set; set.insert(p); set.insert(text)),
    DOES(std::map<upath, int> map; map[p] = 1; map[upath(u"x")] = 2),
    DOES(std::unordered_set<upath> set; set.insert(p)),
    DOES(std::unordered_map<upath, std::string> map; map[p] = utf8),
    GIVES(std::hash<upath>()(p)),

    // asked about
    GIVES(exists(p)),
    GIVES(exists(u"C:/dir")),
    GIVES(exists(text)),
    GIVES(exists(view)),
    GIVES(exists(wide)),
    GIVES(fs::exists(standard)),
    GIVES(exists(p / u"name")),
    GIVES(!exists(p) && access(p.parent(), access_write)),
    GIVES(status(p).get_type() == file_status::directory_file),
    GIVES(file_status::is_directory(status(p))),
    GIVES(file_status::is_symlink(symlink_status(p))),
    GIVES(status(p).get_size()),
    GIVES(status(p).get_mtime() > status(q).get_mtime()),
    GIVES(status_express_light(p)),
    GIVES(equivalent(p, q)),
    GIVES(equivalent(p, u"C:/dir")),
    GIVES(space(p).available),
    GIVES(space(u"C:/").free),
    GIVES(read_symlink(p) / u"name"),

    YIELDS(bool, is_directory(p)),
    YIELDS(bool, is_directory(u"C:/dir")),
    YIELDS(bool, is_regular_file(p / u"name")),
    YIELDS(bool, is_regular_file(text)),
    YIELDS(bool, is_symlink(p) || is_junction(p)),
    YIELDS(bool, is_other(p)),
    YIELDS(bool, is_empty(p)),
    YIELDS(bool, exists(p) && !is_empty(p)),
    YIELDS(std::uint64_t, file_size(p)),
    YIELDS(std::uint64_t, file_size(u"C:/dir/name")),
    YIELDS(std::uint64_t, hard_link_count(p)),
    YIELDS(upath, read_shortcut(p)),
    YIELDS(std::u16string, read_shortcut(u"name.lnk")),
    YIELDS(upath, temp_directory_path()),
    YIELDS(upath, temp_directory_path() / u"name"),

    // times
    YIELDS(file_time_type, last_write_time(p)),
    YIELDS(bool, last_write_time(p) > last_write_time(q)),
    YIELDS(bool, last_write_time(p) < system_clock::now() - std::chrono::hours(24)),
    YIELDS(std::time_t, system_clock::to_time_t(last_write_time(p))),
    DOES(last_write_time(p, last_write_time(q))),
    DOES(last_write_time(p, system_clock::now())),
    DOES(last_write_time(p, file_time_type::clock::now())),
    DOES(last_write_time(u"C:/dir/name", system_clock::now() - std::chrono::seconds(1))),
    DOES(last_write_time(p, system_clock::from_time_t(0))),
    DOES(last_write_time(p, last_write_time(p) + std::chrono::hours(1))),
    YIELDS(file_time_type, to_file_time(status(p).get_mtime())),
    YIELDS(boost::posix_time::ptime, to_ptime(last_write_time(p))),

    // made one of another
    GIVES(absolute(p)),
    GIVES(absolute(p, q)),
    GIVES(absolute(p, u"C:/base")),
    GIVES(absolute(u"name", p)),
    GIVES(canonical(p).string()),
    GIVES(canonical(p, u"C:/base")),
    GIVES(weakly_canonical(p)),
    GIVES(relative(p, q)),
    GIVES(relative(p, u"C:/base")),
    GIVES(relative(p, get_current_path())),
    GIVES(upath(get_current_path()) / u"name"),
    GIVES(change_current_path(p)),
    GIVES(upath(get_install_path()) / u"share"),

    // directories
    DOES(for (auto const &entry : directory_iterator(p)) out << entry.path() << '\n'),
    DOES(for (directory_entry const &entry : directory_iterator(u"C:/dir")) use(entry)),
    DOES(for (auto const &entry : recursive_directory_iterator(p)) use(entry.file_size())),
    DOES(for (auto const &entry : directory_iterator(p))
             if (entry.is_regular_file()) paths.push_back(entry.path())),
    DOES(for (auto const &entry : directory_iterator(p))
             if (entry.is_directory() && !entry.is_symlink()) use(entry.filename())),
    DOES(for (auto const &entry : directory_iterator(p))
             if (entry.path().extension() == u"tmp") remove(entry.path())),
    DOES(for (auto const &entry : directory_iterator(p))
             if (entry.last_write_time() < file_time_type::clock::now()) remove(entry)),
    DOES(for (auto const &entry : directory_iterator(p)) rename(entry, q / entry.filename())),
    DOES(for (auto const &entry : directory_iterator(p)) copy(entry, u"C:/backup")),
    DOES(for (auto i = recursive_directory_iterator(p); i != recursive_directory_iterator(); ++i)
             if (i->path().filename() == u".git") i.disable_recursion_pending()),
    GIVES(recursive_directory_iterator(p, directory_options::follow_directory_symlink |
                                              directory_options::skip_permission_denied)),
    GIVES(std::distance(directory_iterator(p), directory_iterator())),
    GIVES(directory_iterator(p) == directory_iterator()),
    GIVES(std::vector<directory_entry>(directory_iterator(p), directory_iterator())),
    GIVES(std::count_if(directory_iterator(p), directory_iterator(),
                        [](directory_entry const &entry) { return entry.is_symlink(); })),

    YIELDS(directory_entry const &, *directory_iterator(p)),
    DOES(std::ranges::for_each(directory_iterator(p), [](directory_entry const &) {})),
    YIELDS(std::ptrdiff_t, std::ranges::count_if(directory_iterator(p),
                                                 &directory_entry::is_symlink)),
    DOES(recursive_directory_iterator walk(p); if (walk.depth() > 2) walk.pop()),

    // an entry
    YIELDS(directory_entry, directory_entry(p)),
    YIELDS(upath const &, found.path()),
    YIELDS(std::u16string, found.filename()),
    YIELDS(upath, found.path() / u"name"),
    YIELDS(bool, found.path().extension() == u"txt"),
    YIELDS(bool, found.exists() && (found.is_directory() || found.is_regular_file())),
    YIELDS(bool, found.is_symlink() || found.is_junction() || found.is_other()),
    YIELDS(std::uint64_t, found.file_size()),
    YIELDS(file_time_type, found.last_write_time()),
    YIELDS(file_status, found.status()),
    YIELDS(file_status, found.symlink_status()),
    YIELDS(std::uint32_t, found.attributes()),
    DOES(found.refresh()),
    DOES(upath path = found; use(path)),
    YIELDS(bool, exists(found)),
    YIELDS(bool, is_empty(found)),
    YIELDS(std::uint64_t, hard_link_count(found)),
    YIELDS(upath, relative(found, p)),
    YIELDS(bool, found == directory_entry(p) || found < directory_entry(q)),
    YIELDS(std::ostream &, out << found << '\n'),
    YIELDS(std::wostream &, wide_out << found),
    GIVES(std::ifstream(to_standard(found))),
    DOES(std::set<directory_entry> entries; entries.insert(found)),

    // made, changed, removed
    DOES(create_directory(p)),
    DOES(create_directories(p / u"a/b")),
    DOES(create_directories(p.parent())),
    DOES(if (!exists(p)) create_directories(p)),
    DOES(remove(p)),
    DOES(remove_all(p / u"cache")),
    DOES(rename(p, q)),
    DOES(rename(p, u"name")),
    DOES(rename(u"name", p)),
    DOES(rename(p, p.parent() / u"name")),
    DOES(rename(p, upath(p) += u".bak")),
    DOES(copy(p, q)),
    DOES(copy(p, u"copy")),
    DOES(copy(p, q, options::recursive)),
    DOES(copy(p, u"copy", options::recursive | options::overwrite_existing)),
    DOES(copy(u"from", u"to", options::recursive)),
    DOES(copy(text, u"to", options::recursive)),
    DOES(fs::copy(view, view, options::recursive)),
    DOES(copy_file(p, q, options::overwrite_existing)),
    DOES(copy_file(u"from", u"to", options::update_existing)),
    DOES(copy_file(p, q / p.filename())),
    DOES(create_symlink(u"target", p, file_status::file_type_auto)),
    DOES(copy_symlink(p, q)),
    DOES(create_shortcut(p, u"name.lnk")),
    DOES(permissions(p, file_status::perms_add | file_status::owner_write)),

    DOES(create_directory(p, q)),
    DOES(create_directory(p, u"C:/like")),
    YIELDS(bool, ensure_directories(p)),
    YIELDS(bool, ensure_directories(p.parent())),
    DOES(resize_file(p, 0)),
    DOES(create_hard_link(p, q)),
    DOES(create_hard_link(p, u"name")),
    DOES(create_directory_symlink(p, q)),
    DOES(create_directory_symlink(u"target", p)),
    DOES(create_junction(p, q)),
    DOES(create_junction(u"C:/dir", p)),
    YIELDS(removal_report, remove_all(p, removal_options())),
    YIELDS(std::uint64_t, remove_all(p, removal_options()).removed()),
    YIELDS(bool, remove_all(u"C:/dir", removal_options().clear_read_only()).is_complete()),
    YIELDS(removal_report, remove_all(p, removal_options().on_progress(shows))),
    DOES(removal_report const report = remove_all(p, removal_options().keep_going());
         for (failure const &left : report.failures()) out << left.describe() << '\n'),
    YIELDS(bool, copy(p, q, options::recursive, goes_on)),
    YIELDS(bool, copy(p, u"C:/backup", options::none, goes_on)),
    YIELDS(bool, copy(u"from", u"to", options::recursive, goes_on)),
    DOES(if (!copy(p, q, options::recursive,
                   [](copy_progress const &now) { return now.names < 100; })) remove_all(q)),

    // together with the standard library
    GIVES(std::ifstream(to_standard(p))),
    DOES(std::ofstream file(to_standard(p), std::ios::binary); file << utf8),
    GIVES(open(p)),
    DOES(auto file = open(p, std::ios::in); std::string line; std::getline(file, line)),
    GIVES(std::filesystem::file_size(to_standard(p))),
    GIVES(from_standard(standard)),
    DOES(for (auto const &entry : std::filesystem::directory_iterator(to_standard(p)))
             use(upath(entry.path()))),

    // failures
    DOES(try { remove(p); } catch (PathNotFound const &) {}),
    DOES(try { remove(p); } catch (FsysExceptionBase const &e) { out << e.get_path_name().size(); }),
    DOES(try { remove(p); } catch (FsysExceptionBase const &e) { out << e; }),
    DOES(try { remove(p); } catch (std::exception const &e) { out << describe(e) << '\n'; }),
    DOES(outcome<std::uint64_t> size = attempt([] { return file_size(p); }); use(size.value_or(0))),
    DOES(if (auto const size = attempt([] { return file_size(p); })) use(*size)),
    DOES(if (auto const moved = attempt([] { rename(p, q); }); !moved)
             out << moved.error().describe() << '\n'),
    DOES(auto const made = attempt([] { create_directory(p); });
         if (!made && made.error().id() != fsys_excp_file_exists_error) made.value()),
    DOES(use(attempt([] { return status(p); })->get_size())),
    DOES(upath path = *attempt([] { return absolute(p); }) / u"name"; use(path)),
    DOES(std::vector<failure> failures; failures.push_back(attempt([] { remove(p); }).error())),
    DOES(throw_last_error(5, p)),
    DOES(throw_last_error(5, u"C:/dir")),
    DOES(throw_last_error(17, p, q)),
    DOES(throw_last_error(17, p, u"C:/dir")),
};
// clang-format on

TEST(Idioms, Compile)
{
    EXPECT_GE(std::size(accepted), 90U);
    for (idiom const &row : accepted)
        EXPECT_NE(row.compiled, nullptr) << row.written;
}

#undef GIVES
#undef YIELDS
#undef DOES

} // namespace
