#include "platform/contract.hpp"

namespace contract {

namespace {

std::uint64_t size_of(std::wstring const &name)
{
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    ::GetFileAttributesExW(name.c_str(), GetFileExInfoStandard, &data);
    return (std::uint64_t{data.nFileSizeHigh} << 32) | data.nFileSizeLow;
}

constexpr DWORD backup = FILE_FLAG_BACKUP_SEMANTICS;

constexpr call_row name_cases[] = {
    {LR"(@\file\)", ERROR_INVALID_NAME, "a file is no directory"},
    {LR"(@\dir)", ERROR_ACCESS_DENIED, "directories want a flag"},
    {LR"(@\dir\)", ERROR_PATH_NOT_FOUND, "another code for another text", ERROR_ACCESS_DENIED},
    {LR"(@\dir/)", ERROR_PATH_NOT_FOUND, "a slash is one, too", ERROR_ACCESS_DENIED},
    {LR"(C:\)", ERROR_PATH_NOT_FOUND, "a root always ends in a separator", ERROR_ACCESS_DENIED},
    {LR"(?@\nul)", ERROR_FILE_NOT_FOUND, "no device is looked for"},
    {LR"(?@\dir\)", ERROR_PATH_NOT_FOUND, "a directory with a backslash", ERROR_ACCESS_DENIED},
    {L"nul", success, "a device"},
    {LR"(\\.\nul)", success, "a device by its prefix"},
};

TEST(Opening, Outcomes)
{
    auto const open_it = [](std::wstring const &name) { return code_of_open(name); };
    expect_codes(fill, open_it, names_of_file, missing_names, missing_roots, as_it_stands, no_names,
                 name_cases);
}

constexpr call_row directory_cases[] = {
    {LR"(@\file\)", ERROR_INVALID_NAME, "a file is no directory, whatever the flags are"},
    {LR"(@\missing\)", ERROR_FILE_NOT_FOUND, "a separator at the end"},
};

TEST(Opening, OutcomesForDirectories)
{
    auto const open_it = [](std::wstring const &name) {
        return code_of_open(name, {.flags = backup});
    };
    expect_codes(fill, open_it, names_of_file, names_of_directories, missing_names, missing_roots,
                 as_it_stands, no_names, directory_cases);
}

TEST(Opening, WorksOnAShare)
{
    workspace space;
    NEEDS(space.has_share(), "there is no share");
    std::wstring const root = wide(space.share_root());
    space.make_file(space.share_root() + u"\\file");
    EXPECT_EQ(code_of_open(root + LR"(\FILE)"), success);
    EXPECT_EQ(code_of_open(LR"(\\?\UNC)" + root.substr(1) + LR"(\file)"), success);
    EXPECT_EQ(code_of_open(root), DWORD{ERROR_ACCESS_DENIED}) << "a directory";
    EXPECT_EQ(code_of_open(root, {.flags = backup}), success);
    EXPECT_EQ(code_of_open(root + LR"(\missing)"), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(code_of_open(LR"(\\fl-server\fl-missing-share\a)"),
              expected(ERROR_BAD_NET_NAME, ERROR_PATH_NOT_FOUND));
}

// Wine knows no such limit.
TEST(Opening, NeedsALongPrefixFrom260Units)
{
    workspace space;
    for (std::size_t const length : {258U, 259U, 260U, 300U}) {
        std::wstring const name = long_path(space, length);
        DWORD const code = length < 260 ? success : beyond_limit(ERROR_PATH_NOT_FOUND);
        EXPECT_EQ(code_of_open(name, anew), code) << length;
        EXPECT_EQ(space.exists(units(name)), code == success) << length;
        space.make_file(units(name));
        EXPECT_EQ(code_of_open(name), code) << length;
        EXPECT_EQ(code_of_open(LR"(\\?\)" + name), success) << length;
    }
}

TEST(Opening, TakesNamesOf255Units)
{
    workspace space;
    std::wstring const prefixed = LR"(\\?\)" + wide(space.root()) + LR"(\)";
    EXPECT_EQ(code_of_open(prefixed + std::wstring(255, L'n'), anew), success);
    EXPECT_EQ(code_of_open(prefixed + std::wstring(256, L'n'), anew),
              expected(ERROR_INVALID_NAME, ERROR_FILE_NOT_FOUND));
}

/// A disposition over what is there. `size` is that of the name afterwards, of the
/// seven bytes that a file of the folder has.
struct disposition_case
{
    wchar_t const *text;
    DWORD disposition;
    DWORD access;
    DWORD code;
    std::uint64_t size;
    char const *why;
    DWORD wine = as_windows;
};

constexpr DWORD both = GENERIC_READ | GENERIC_WRITE;

constexpr disposition_case disposition_cases[] = {
    {LR"(@\new)", CREATE_NEW, both, success, 0, "a new name"},
    {LR"(@\new)", CREATE_ALWAYS, both, success, 0, "a new name"},
    {LR"(@\new)", OPEN_EXISTING, both, ERROR_FILE_NOT_FOUND, 0, "must be there"},
    {LR"(@\new)", OPEN_ALWAYS, both, success, 0, "a new name"},
    {LR"(@\new)", TRUNCATE_EXISTING, both, ERROR_FILE_NOT_FOUND, 0, "must be there"},
    {LR"(@\new)", CREATE_NEW, 0, success, 0, "a right on the file isn't asked for"},
    {LR"(@\new\)", CREATE_NEW, both, ERROR_INVALID_NAME, 0, "a file's name has no separator"},
    {LR"(@\new\)", OPEN_ALWAYS, both, ERROR_INVALID_NAME, 0, "however it is made"},
    {LR"(@\file\)", CREATE_NEW, both, ERROR_INVALID_NAME, 0, "nor that of one that is there",
     ERROR_FILE_EXISTS},
    {LR"(@\file\)", CREATE_ALWAYS, both, ERROR_INVALID_NAME, 0, "nor one that is replaced"},
    {LR"(@\readonly\)", TRUNCATE_EXISTING, both, ERROR_INVALID_NAME, 0, "read-only or not"},
    {LR"(@\missing\new)", CREATE_NEW, both, ERROR_PATH_NOT_FOUND, 0, "no parent"},
    {LR"(@\file\new)", CREATE_NEW, both, ERROR_PATH_NOT_FOUND, 0, "below a file"},
    {LR"(@\file)", CREATE_NEW, both, ERROR_FILE_EXISTS, 7, "there"},
    {LR"(@\FILE)", CREATE_NEW, 0, ERROR_FILE_EXISTS, 7, "there, in whatever case"},
    {LR"(@\file)", CREATE_ALWAYS, both, success, 0, "cut to nothing"},
    {LR"(@\file)", CREATE_ALWAYS, GENERIC_READ, success, 0, "even if opened for reading"},
    {LR"(@\file)", OPEN_EXISTING, both, success, 7, "left alone"},
    {LR"(@\file)", OPEN_ALWAYS, both, success, 7, "left alone"},
    {LR"(@\file)", TRUNCATE_EXISTING, both, success, 0, "cut to nothing"},
    {LR"(@\file)", TRUNCATE_EXISTING, GENERIC_READ, ERROR_INVALID_PARAMETER, 7,
     "needs the right to write", success},
    {LR"(@\readonly)", CREATE_NEW, both, ERROR_FILE_EXISTS, 7, "there"},
    {LR"(@\readonly)", OPEN_EXISTING, GENERIC_READ, success, 7, "reading is fine"},
    {LR"(@\readonly)", OPEN_EXISTING, FILE_WRITE_ATTRIBUTES, success, 7, "attributes are fine"},
    {LR"(@\readonly)", OPEN_EXISTING, DELETE, success, 7, "it may be moved"},
    {LR"(@\hidden)", CREATE_ALWAYS, both, ERROR_ACCESS_DENIED, 7,
     "the attribute must be given again", success},
    {LR"(@\hidden)", OPEN_EXISTING, both, success, 7, "nothing special"},
    {LR"(@\hidden)", OPEN_ALWAYS, both, success, 7, "nothing special"},
    {LR"(@\dir)", CREATE_NEW, both, ERROR_ACCESS_DENIED, 0, "a directory is told first",
     ERROR_FILE_EXISTS},
    {LR"(@\dir)", CREATE_ALWAYS, both, ERROR_ACCESS_DENIED, 0, "no file"},
    {LR"(@\dir)", OPEN_EXISTING, both, ERROR_ACCESS_DENIED, 0, "no file"},
    {LR"(@\dir)", OPEN_ALWAYS, both, ERROR_ACCESS_DENIED, 0, "no file"},
    {LR"(@\dir)", TRUNCATE_EXISTING, both, ERROR_ACCESS_DENIED, 0, "no file"},
    {LR"(@\dir\)", OPEN_ALWAYS, both, ERROR_PATH_NOT_FOUND, 0, "with a separator",
     ERROR_ACCESS_DENIED},
    {LR"(@\file)", 0, both, ERROR_INVALID_PARAMETER, 7, "no disposition"},
    {LR"(@\new)", 6, both, ERROR_INVALID_PARAMETER, 0, "nor this"},
    {LR"(nul)", CREATE_ALWAYS, both, success, 0, "devices are always there"},
    {LR"(nul)", OPEN_ALWAYS, GENERIC_WRITE, success, 0, "devices are always there"},
};

void check(disposition_case const &row)
{
    workspace space;
    fill(space);
    std::wstring const name = text_in(space, row.text);
    manner const how = {.access = row.access, .disposition = row.disposition};
    EXPECT_EQ(code_of_open(name, how), expected(row.code, row.wine))
        << row.text << ", " << row.disposition << ": " << row.why;
    bool const wine_cuts = runs_under_wine() && row.wine == success;
    EXPECT_EQ(size_of(name), wine_cuts ? 0 : row.size) << row.text << ", " << row.disposition;
}

TEST(Opening, Dispositions)
{
    for (disposition_case const &row : disposition_cases)
        check(row);
}

constexpr disposition_case refused_writes[] = {
    {LR"(@\readonly)", CREATE_ALWAYS, both, ERROR_ACCESS_DENIED, 7, "nobody writes to it"},
    {LR"(@\readonly)", CREATE_ALWAYS, GENERIC_READ, ERROR_ACCESS_DENIED, 7, "cutting is writing"},
    {LR"(@\readonly)", OPEN_EXISTING, both, ERROR_ACCESS_DENIED, 7, "nobody writes to it"},
    {LR"(@\readonly)", OPEN_EXISTING, FILE_APPEND_DATA, ERROR_ACCESS_DENIED, 7, "nor appends"},
    {LR"(@\readonly)", OPEN_ALWAYS, both, ERROR_ACCESS_DENIED, 7, "nobody writes to it"},
    {LR"(@\readonly)", TRUNCATE_EXISTING, both, ERROR_ACCESS_DENIED, 7, "nobody writes to it"},
};

// Wine leaves this to the host, which stops everybody but its administrator.
TEST(Opening, NobodyWritesToAReadOnlyFile)
{
    NEEDS(keeps_writers_out(), "the host lets its administrator write to read-only files");
    for (disposition_case const &row : refused_writes)
        check(row);
}

TEST(Opening, TellsWhetherTheNameWasThere)
{
    for (DWORD const disposition : {DWORD{CREATE_ALWAYS}, DWORD{OPEN_ALWAYS}}) {
        workspace space;
        fill(space);
        for (bool const is_there : {false, true}) {
            ::SetLastError(untouched);
            handle const opened = open(in(space, L"new"), {.disposition = disposition});
            DWORD const code = ::GetLastError();
            EXPECT_TRUE(opened) << disposition;
            DWORD const told = is_there ? ERROR_ALREADY_EXISTS : NO_ERROR;
            EXPECT_EQ(code, told) << disposition;
        }
    }
}

// With the flag for directories, those that make something still make a file, and
// those that cut still want one.
TEST(Opening, DispositionsOnDirectories)
{
    workspace space;
    fill(space);
    std::wstring const name = in(space, L"dir");
    auto const code = [&](DWORD disposition) {
        return code_of_open(name, {.access = both, .disposition = disposition, .flags = backup});
    };
    EXPECT_EQ(code(OPEN_EXISTING), success) << "the right to write means to make entries";
    EXPECT_EQ(code(OPEN_ALWAYS), success);
    EXPECT_EQ(code(CREATE_NEW), DWORD{ERROR_FILE_EXISTS});
    EXPECT_EQ(code(CREATE_ALWAYS), DWORD{ERROR_FILE_EXISTS});
    EXPECT_EQ(code_of_open(in(space, L"new"), {.disposition = OPEN_ALWAYS, .flags = backup}),
              success);
    EXPECT_TRUE(space.is_file(space.path(u"new")));
}

/// Rights to ask for, on a file and on a directory.
constexpr DWORD rights[] = {
    0,          FILE_READ_ATTRIBUTES, FILE_WRITE_ATTRIBUTES, FILE_READ_EA,  FILE_LIST_DIRECTORY,
    DELETE,     SYNCHRONIZE,          GENERIC_READ,          GENERIC_WRITE, GENERIC_EXECUTE,
    GENERIC_ALL};

TEST(Opening, GrantsEachRight)
{
    workspace space;
    fill(space);
    for (DWORD const access : rights) {
        manner const how = {.access = access, .flags = backup};
        EXPECT_EQ(code_of_open(in(space, L"file"), how), success) << access;
        EXPECT_EQ(code_of_open(in(space, L"dir"), how), success) << access;
        EXPECT_EQ(code_of_open(in(space, L"dir"), {.access = access}), DWORD{ERROR_ACCESS_DENIED})
            << access;
        EXPECT_EQ(code_of_open(in(space, L"missing"), how), DWORD{ERROR_FILE_NOT_FOUND}) << access;
    }
}

TEST(Opening, RefusesAnUnknownShareMode)
{
    workspace space;
    fill(space);
    EXPECT_EQ(code_of_open(in(space, L"file"), {.share = share_all | 8}),
              expected(ERROR_INVALID_PARAMETER, success));
}

/// Two opens of one file, the first of them still there.
struct sharing_case
{
    DWORD first_access, first_share;
    DWORD second_access, second_share;
    DWORD code;
    char const *why;
    DWORD wine = as_windows;
};

constexpr DWORD read = FILE_SHARE_READ, write = FILE_SHARE_WRITE, remove = FILE_SHARE_DELETE;

constexpr sharing_case sharing_cases[] = {
    {GENERIC_READ, read, GENERIC_READ, read, success, "two readers"},
    {GENERIC_READ, 0, GENERIC_READ, share_all, ERROR_SHARING_VIOLATION, "the first shares nothing"},
    {GENERIC_READ, share_all, GENERIC_READ, 0, ERROR_SHARING_VIOLATION, "nor the second"},
    {GENERIC_READ, read, GENERIC_WRITE, share_all, ERROR_SHARING_VIOLATION, "no writer beside it"},
    {GENERIC_WRITE, share_all, GENERIC_READ, read, ERROR_SHARING_VIOLATION, "a writer was there"},
    {GENERIC_WRITE, share_all, GENERIC_READ, read | write, success, "and may be"},
    {GENERIC_WRITE, write, GENERIC_WRITE, write, success, "two writers"},
    {GENERIC_WRITE, write, GENERIC_READ, share_all, ERROR_SHARING_VIOLATION, "but no reader"},
    {FILE_APPEND_DATA, share_all, GENERIC_READ, read, ERROR_SHARING_VIOLATION,
     "appending is writing"},
    {GENERIC_EXECUTE, share_all, GENERIC_WRITE, write, ERROR_SHARING_VIOLATION,
     "executing is reading"},
    {GENERIC_READ, read | write, DELETE, share_all, ERROR_SHARING_VIOLATION, "not to be deleted"},
    {GENERIC_READ, remove, DELETE, share_all, success, "may be deleted"},
    {DELETE, share_all, GENERIC_READ, read, ERROR_SHARING_VIOLATION, "it may be deleted already"},
    {DELETE, 0, GENERIC_READ, share_all, ERROR_SHARING_VIOLATION, "about to be deleted alone"},
    {GENERIC_ALL, 0, GENERIC_READ, share_all, ERROR_SHARING_VIOLATION, "all includes reading"},
    {GENERIC_ALL, share_all, GENERIC_READ, read | write, ERROR_SHARING_VIOLATION,
     "all includes deleting"},
    {GENERIC_ALL, 0, 0, 0, success, "no access is in nobody's way"},
    {0, 0, GENERIC_ALL, 0, success, "in either order"},
    {GENERIC_ALL, 0, FILE_READ_ATTRIBUTES, 0, success, "nor are attributes"},
    {FILE_READ_ATTRIBUTES | FILE_WRITE_ATTRIBUTES, 0, GENERIC_ALL, 0, success, "in either order"},
    {GENERIC_ALL, 0, FILE_READ_EA, 0, success, "nor are extended ones"},
    {FILE_READ_EA, 0, GENERIC_ALL, 0, success, "in either order"},
    {GENERIC_ALL, 0, READ_CONTROL | SYNCHRONIZE, 0, success, "nor the rights to it"},
};

TEST(Opening, ShareModes)
{
    workspace space;
    fill(space);
    for (wchar_t const *name : {L"file", L"dir"}) {
        for (sharing_case const &row : sharing_cases) {
            handle const first =
                open(in(space, name),
                     {.access = row.first_access, .share = row.first_share, .flags = backup});
            EXPECT_TRUE(first) << name << ": " << row.why;
            EXPECT_EQ(code_of_open(in(space, name), {.access = row.second_access,
                                                     .share = row.second_share,
                                                     .flags = backup}),
                      expected(row.code, row.wine))
                << name << ": " << row.why;
        }
    }
}

TEST(Opening, SharesAgainAfterTheClose)
{
    workspace space;
    fill(space);
    handle first = open(in(space, L"file"), {.access = both, .share = 0});
    EXPECT_EQ(code_of_open(in(space, L"file")), DWORD{ERROR_SHARING_VIOLATION});
    EXPECT_EQ(code_of_open(in(space, L"readonly")), success) << "another file";
    EXPECT_EQ(get_file_attributes(in(space, L"file")), success) << "attributes are open to all";
    first.close();
    EXPECT_EQ(code_of_open(in(space, L"file")), success);
}

// Wine asks for no right to write then.
TEST(Opening, CuttingIsWritingForOthers)
{
    workspace space;
    fill(space);
    handle const reader = open(in(space, L"file"), {.share = read});
    EXPECT_EQ(code_of_open(in(space, L"file"), {.disposition = CREATE_ALWAYS}),
              expected(ERROR_SHARING_VIOLATION, success));
    EXPECT_EQ(size_of(in(space, L"file")), runs_under_wine() ? 0U : 7U);
}

/// Attributes given where a file is made, and those that it has then.
struct attribute_case
{
    DWORD given, found;
    char const *why;
};

constexpr attribute_case attribute_cases[] = {
    {0, FILE_ATTRIBUTE_ARCHIVE, "each new file is to be archived"},
    {FILE_ATTRIBUTE_NORMAL, FILE_ATTRIBUTE_ARCHIVE, "normal means none"},
    {FILE_ATTRIBUTE_ARCHIVE, FILE_ATTRIBUTE_ARCHIVE, "given, too"},
    {FILE_ATTRIBUTE_READONLY, FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE, "read-only"},
    {FILE_ATTRIBUTE_HIDDEN, FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_ARCHIVE, "hidden"},
    {FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM,
     FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE, "two of them"},
    {FILE_ATTRIBUTE_DIRECTORY, FILE_ATTRIBUTE_ARCHIVE, "it makes files, no directories"},
    {FILE_ATTRIBUTE_REPARSE_POINT, FILE_ATTRIBUTE_ARCHIVE, "no reparse points either"},
};

TEST(Opening, GivesANewFileItsAttributes)
{
    for (attribute_case const &row : attribute_cases) {
        workspace space;
        std::wstring const name = in(space, L"new");
        manner const how = {.access = GENERIC_WRITE, .disposition = CREATE_NEW, .flags = row.given};
        EXPECT_EQ(code_of_open(name, how), success) << row.why;
        EXPECT_EQ(attributes_of(name), row.found) << row.why;
    }
}

// Wine cuts the content only.
TEST(Opening, OverwritesAttributesWithTheContent)
{
    workspace space;
    fill(space);
    std::wstring const name = in(space, L"hidden");
    manner const cut = {
        .access = GENERIC_WRITE, .disposition = CREATE_ALWAYS, .flags = FILE_ATTRIBUTE_HIDDEN};
    EXPECT_EQ(code_of_open(name, cut), success);
    EXPECT_EQ(attributes_of(name), DWORD{FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_ARCHIVE});
    EXPECT_EQ(size_of(name), 0U);
    EXPECT_EQ(code_of_open(in(space, L"file"), cut), success);
    EXPECT_EQ(attributes_of(in(space, L"file")),
              expected(FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_ARCHIVE, FILE_ATTRIBUTE_ARCHIVE));
}

TEST(Opening, LeavesTheAttributesOfAnOpenedFileAlone)
{
    workspace space;
    fill(space);
    std::wstring const name = in(space, L"readonly");
    manner const how = {.disposition = OPEN_ALWAYS, .flags = FILE_ATTRIBUTE_HIDDEN};
    EXPECT_EQ(code_of_open(name, how), success);
    EXPECT_EQ(attributes_of(name), DWORD{FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE});
}

} // namespace

} // namespace contract
