// The tables of docs/abi.md: what the compiler says of the layouts, and how long the lists of
// exported names are.

#include "guide/page.hpp"

#include <array>
#include <cstddef>
#include <cstring>
#include <new>

namespace {

using namespace guide;

char const page[] = "docs/abi.md";

/// The number behind a word in a cell such as "text 0, flag 32".
std::size_t offset_in(std::string const &cell, std::string const &member)
{
    std::size_t const at = cell.find(member + ' ');
    EXPECT_NE(at, std::string::npos) << member << " in " << cell;
    return at == std::string::npos ? 0 : std::stoul(cell.substr(at + member.size()));
}

/// Where `part` lies in `whole`.
template <typename Whole, typename Part>
std::size_t place(Whole const &whole, Part const &part)
{
    return static_cast<std::size_t>(reinterpret_cast<std::byte const *>(&part) -
                                    reinterpret_cast<std::byte const *>(&whole));
}

/// Where a value of that many bytes lies in an object, by its bytes.
template <typename Whole, typename Value>
std::size_t place_of_value(Whole const &whole, Value const &value)
{
    std::array<std::byte, sizeof(Whole)> bytes;
    std::memcpy(bytes.data(), static_cast<void const *>(&whole), sizeof(Whole));
    for (std::size_t at = 0; at + sizeof(Value) <= sizeof(Whole); at += 4)
        if (std::memcmp(bytes.data() + at, &value, sizeof(Value)) == 0)
            return at;
    return sizeof(Whole);
}

// The private members of exceptions, in the order that is promised.
struct exception_layout
{
    void const *table;
    std::string identifier;
    int number;
    std::u16string pathname;
    std::vector<std::u16string> further;
    unsigned int code;
};
struct invalid_argument_layout : exception_layout
{
    std::string text;
    std::string message;
};

void check_paths(std::map<std::string, lines> const &rows)
{
    fs::upath const path(u"C:\\dir");
    lines const &of_path = rows.at("upath");
    EXPECT_EQ(std::to_string(sizeof(path)), of_path[1]);
    EXPECT_EQ(place(path, path.native()), offset_in(of_path[2], "text"));
    EXPECT_EQ(sizeof(std::u16string),
              offset_in(of_path[2], "flag")); // tests/pathname/path_test.cpp

    fs::upath::iterator const it;
    lines const &of_iterator = rows.at("upath::iterator");
    EXPECT_EQ(std::to_string(sizeof(it)), of_iterator[1]);
    EXPECT_EQ(place(it, it.root_length), offset_in(of_iterator[2], "root length"));
    EXPECT_EQ(place(it, it.element), offset_in(of_iterator[2], "element"));
    EXPECT_EQ(place(it, it.owner), offset_in(of_iterator[2], "owner"));
    EXPECT_EQ(place(it, it.position), offset_in(of_iterator[2], "position"));

    fs::pathname_element_context<char16_t> const parts;
    lines const &of_parts = rows.at("pathname_element_context<char16_t>");
    EXPECT_EQ(std::to_string(sizeof(parts)), of_parts[1]);
    EXPECT_EQ(place(parts, parts.parent_path), offset_in(of_parts[2], "parent path"));
    EXPECT_EQ(place(parts, parts.filename), offset_in(of_parts[2], "filename"));
    EXPECT_EQ(place(parts, parts.stem), offset_in(of_parts[2], "stem"));
    EXPECT_EQ(place(parts, parts.extension), offset_in(of_parts[2], "extension"));
}

void check_records(std::map<std::string, lines> const &rows)
{
    using boost::posix_time::ptime;
    auto const year = [](unsigned short number) {
        return ptime(boost::gregorian::date(number, 1, 1));
    };
    constexpr std::uint64_t size = 0x1122334455667788;
    fs::file_status const full(fs::file_status::regular_file, 0640, year(2001), year(2002),
                               year(2003), size);
    lines const &row = rows.at("file_status");
    EXPECT_EQ(std::to_string(sizeof(full)), row[1]);
    EXPECT_EQ(place_of_value(full, 2U), offset_in(row[2], "standard's type"));
    EXPECT_EQ(place_of_value(full, 0640U), offset_in(row[2], "standard's permissions"));
    EXPECT_EQ(place_of_value(full, unsigned{fs::file_status::regular_file}),
              offset_in(row[2], ", type"));
    EXPECT_EQ(place_of_value(full, year(2001)), offset_in(row[2], "times of access"));
    EXPECT_EQ(place_of_value(full, year(2002)), offset_in(row[2], "write"));
    EXPECT_EQ(place_of_value(full, year(2003)), offset_in(row[2], "creation"));
    EXPECT_EQ(place_of_value(full, size), offset_in(row[2], "size"));

    fs::file_status_light const light(fs::file_status::regular_file, year(2002), size);
    lines const &of_light = rows.at("file_status_light");
    EXPECT_EQ(std::to_string(sizeof(light)), of_light[1]);
    EXPECT_EQ(place_of_value(light, 2U), offset_in(of_light[2], "standard's type"));
    EXPECT_EQ(place_of_value(light, unsigned{fs::file_status::regular_file}),
              offset_in(of_light[2], ", type"));
    EXPECT_EQ(place_of_value(light, year(2002)), offset_in(of_light[2], "time of write"));
    EXPECT_EQ(place_of_value(light, size), offset_in(of_light[2], "size"));
}

void check_exceptions(std::map<std::string, lines> const &rows)
{
    fs::SystemError const error(0xDEADBEEF, u"p");
    lines const &row = rows.at("FsysExceptionBase");
    EXPECT_EQ(std::to_string(sizeof(fs::FsysExceptionBase)), row[1]);
    EXPECT_EQ(sizeof(exception_layout), sizeof(fs::FsysExceptionBase));
    exception_layout const model{};
    EXPECT_EQ(place(model, model.identifier), offset_in(row[2], "identifier"));
    EXPECT_EQ(place(model, model.number), offset_in(row[2], "number"));
    EXPECT_EQ(place(model, model.pathname), offset_in(row[2], ", pathname"));
    EXPECT_EQ(place(model, model.further), offset_in(row[2], "further pathnames"));
    EXPECT_EQ(place(model, model.code), offset_in(row[2], "code"));
    fs::FsysExceptionBase const &base = error;
    EXPECT_EQ(place_of_value(base, 0xDEADBEEF), offset_in(row[2], "code"));
    EXPECT_EQ(place_of_value(base, static_cast<int>(error.get_excp_id())),
              offset_in(row[2], "number"));

    lines const &of_argument = rows.at("InvalidArgument");
    EXPECT_EQ(std::to_string(sizeof(fs::InvalidArgument)), of_argument[1]);
    EXPECT_EQ(sizeof(invalid_argument_layout), sizeof(fs::InvalidArgument));
    invalid_argument_layout const argument{};
    EXPECT_EQ(place(argument, argument.text), offset_in(of_argument[2], "text"));
    EXPECT_EQ(place(argument, argument.message), offset_in(of_argument[2], "message"));
}

TEST(AbiGuide, Layouts)
{
    std::map<std::string, lines> rows;
    for (lines const &row : rows_of(page, "| type | size | members in their order |"))
        rows[row[0]] = row;
    EXPECT_EQ(rows.size(), 8U);
    check_paths(rows);
    check_records(rows);
    check_exceptions(rows);
    EXPECT_EQ(std::to_string(sizeof(fs::detail::windows::reparse_data_context)),
              rows.at("detail::windows::reparse_data_context")[1]);
    EXPECT_EQ(sizeof(fs::removal_options), sizeof(std::shared_ptr<int>));
    EXPECT_EQ(sizeof(fs::removal_report), sizeof(std::shared_ptr<int>));
    EXPECT_EQ(sizeof(fs::directory_entry), sizeof(std::shared_ptr<int>));
    EXPECT_EQ(sizeof(fs::directory_iterator), sizeof(std::shared_ptr<int>));
    EXPECT_EQ(sizeof(fs::recursive_directory_iterator), sizeof(std::shared_ptr<int>));
}

TEST(AbiGuide, ListsAreAsLongAsThePageSays)
{
    for (lines const &row : rows_of(page, "| version | list | names |")) {
        std::size_t names = 0;
        for (std::size_t at = row[1].find("tests/"); at != std::string::npos;
             at = row[1].find("tests/", at + 1)) {
            std::string const list = row[1].substr(at, row[1].find(".txt", at) + 4 - at);
            names += lines_of(list).size();
        }
        if (row[2] == "not released yet")
            EXPECT_GT(names, lines_of("tests/abi/0.1.0.txt").size()) << row[0];
        else
            EXPECT_EQ(std::to_string(names), row[2]) << row[0];
    }
}

TEST(AbiGuide, NoNameOfTheLastReleaseIsGone)
{
    lines now = lines_of("tests/exports.txt");
    lines const additions = lines_of("tests/exports-additions.txt");
    now.insert(now.end(), additions.begin(), additions.end());
    for (std::string const &name : lines_of("tests/abi/0.1.0.txt"))
        EXPECT_NE(std::find(now.begin(), now.end(), name), now.end()) << name;
}

} // namespace
