// What people write who know std::filesystem or Boost's: a row for each idiom, which compiles
// or is refused for a reason. Nothing of it runs; what each call does is tested where it
// belongs.

#include <fl/filesystem.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
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

template <typename Value>
void use(Value const &)
{
}

struct idiom
{
    char const *written;
    void (*compiled)();
};

// An expression, and statements. The formatter doesn't know that a row is code.
// clang-format off
#define GIVES(...) {#__VA_ARGS__, [] { static_cast<void>(__VA_ARGS__); }}
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
};
// clang-format on

TEST(Idioms, Compile)
{
    EXPECT_GE(std::size(accepted), 90U);
    for (idiom const &row : accepted)
        EXPECT_NE(row.compiled, nullptr) << row.written;
}

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

// The names in a row are those above, of types that only the row's own template knows.
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
    REFUSED("rename(p, nullptr)", "no text", fs::rename(p, nullptr)),
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
};

TEST(Idioms, WrittenOtherwiseDoCompile)
{
    for (refusal const &row : written_otherwise)
        EXPECT_TRUE(row.compiles) << "row " << &row - written_otherwise;
}

#undef GIVES
#undef DOES
#undef REFUSED

} // namespace
