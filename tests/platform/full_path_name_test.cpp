#include "platform/contract.hpp"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <optional>
#include <utility>

namespace contract {

namespace {

/// In a current directory that is called `here`. `@` stands for it in what is expected.
template <typename Rows>
void expect_full_paths(Rows const &rows)
{
    workspace space;
    space.make_directory(space.path(u"here"));
    space.change_directory(space.path(u"here"));
    for (text_row const &row : rows) {
        std::wstring const name = expected(row);
        bool const is_here = name.starts_with(L'@');
        EXPECT_EQ(full_path(row.text), is_here ? in(space, L"here") + name.substr(1) : name)
            << row.why;
    }
}

constexpr text_row drive_cases[] = {
    {LR"(C:\)", LR"(C:\)", "a root directory"},
    {LR"(C:\dir\file)", LR"(C:\dir\file)", "nothing to do"},
    {LR"(c:\dir)", LR"(c:\dir)", "the drive's letter stays as it is"},
    {LR"(C:\dir\)", LR"(C:\dir\)", "a separator at the end stays"},
    {LR"(C:/dir/file)", LR"(C:\dir\file)", "slashes become backslashes"},
    {LR"(C:/)", LR"(C:\)", "also in the root"},
    {LR"(C:\\dir\/\file\\)", LR"(C:\dir\file\)", "runs of separators are one"},
    {LR"(C:\a\.\b)", LR"(C:\a\b)", "one dot means here"},
    {LR"(C:\a\..\b)", LR"(C:\b)", "two dots mean up"},
    {LR"(C:\a\b\.\..\c)", LR"(C:\a\c)", "both"},
    {LR"(C:\a\.)", LR"(C:\a)", "a dot at the end takes its separator along"},
    {LR"(C:\a\..)", LR"(C:\)", "up to the root, which keeps its own"},
    {LR"(C:\a\b\..)", LR"(C:\a)", "up to a directory"},
    {LR"(C:\a\.\)", LR"(C:\a\)", "a dot with a separator behind it"},
    {LR"(C:\a\..\)", LR"(C:\)", "two dots with a separator behind them"},
    {LR"(C:\..\..\a)", LR"(C:\a)", "nothing is above the root"},
    {LR"(C:\.)", LR"(C:\)", "here, in the root"},
    {LR"(C:\..)", LR"(C:\)", "up, in the root"},
    {LR"(C:\.a\..b\c)", LR"(C:\.a\..b\c)", "dots ahead belong to a name"},
    {LR"(C:\a:b\c*?|")", LR"(C:\a:b\c*?|")", "no name is checked"},
    {LR"(1:\a\..\b)", LR"(1:\b)", "a drive, whatever stands ahead of the colon"},
    {LR"(::a)", LR"(::\a)", "even another colon"},
    {L"C:\\a\x1F\tb", L"C:\\a\x1F\tb", "nor any unit"},
};

constexpr text_row trimming_cases[] = {
    {LR"(C:\a.)", LR"(C:\a)", "a full stop at the end is removed"},
    {LR"(C:\a. . )", LR"(C:\a)", "and all full stops and blanks together"},
    {LR"(C:\a )", LR"(C:\a)", "and a blank"},
    {LR"(C:\a \)", LR"(C:\a \)", "but not ahead of a separator"},
    {LR"(C:\a \b)", LR"(C:\a \b)", "nor within"},
    {LR"(C:\a.\b)", LR"(C:\a\b)", "a single full stop goes from a name within"},
    {LR"(C:\a.\)", LR"(C:\a\)", "also ahead of a separator at the end"},
    {LR"(C:\a .\b)", LR"(C:\a \b)", "and the blank ahead of it stays"},
    {LR"(C:\a..\b)", LR"(C:\a..\b)", "but two full stops stay", LR"(C:\a.\b)"},
    {LR"(C:\ ..\)", LR"(C:\ ..\)", "also behind a blank", LR"(C:\ .\)"},
    {LR"(C:\ ...\)", LR"(C:\ ...\)", "and three", LR"(C:\ ..\)"},
    {LR"(C:\a\...\b)", LR"(C:\a\...\b)", "three full stops are a name", LR"(C:\a\..\b)"},
    {LR"(C:\...\)", LR"(C:\...\)", "also with a separator behind them", LR"(C:\..\)"},
    {LR"(C:\a\...)", LR"(C:\a\)", "but at the end they go, as all full stops do"},
    {LR"(C:\...)", LR"(C:\)", "also in the root"},
    {LR"(C:\a\ )", LR"(C:\a\)", "a blank alone leaves the separator"},
    {LR"(C:\a\ .)", LR"(C:\a\)", "and so do blanks and full stops"},
    {LR"(C:\a\.. )", LR"(C:\a\)", "with a blank, two dots don't mean up"},
    {LR"(C:\a\. )", LR"(C:\a\)", "nor one here"},
    {LR"(C:\. \)", LR"(C:\. \)", "a name within keeps all that ends in a blank"},
    {LR"(C:\ )", LR"(C:\)", "a blank in the root"},
    {L"C:\\a\t", L"C:\\a\t", "a tab is no blank"},
    {LR"(C:\a..\.)", LR"(C:\a)", "the end is trimmed once the dots are resolved"},
    {LR"(C:\a \b\..)", LR"(C:\a)", "also by two dots"},
    {LR"(C:\b\. \.)", LR"(C:\b\)", "and nothing may be left"},
};

constexpr text_row network_cases[] = {
    {LR"(\\server\share)", LR"(\\server\share)", "server and share are the root"},
    {LR"(\\server\share\)", LR"(\\server\share\)", "a separator at the end stays"},
    {LR"(\\server\share\dir)", LR"(\\server\share\dir)", "nothing to do"},
    {LR"(//server/share/dir)", LR"(\\server\share\dir)", "slashes become backslashes"},
    {LR"(\\server\share\a\..\b)", LR"(\\server\share\b)", "two dots mean up"},
    {LR"(\\server\share\..\a)", LR"(\\server\share\a)", "but not above the share"},
    {LR"(\\server\share\..\..\a)", LR"(\\server\share\a)", "however often"},
    {LR"(\\server\share\.)", LR"(\\server\share)", "the root has no separator of its own",
     LR"(\\server\share\)"},
    {LR"(\\server\share\..)", LR"(\\server\share)", "also with two dots", LR"(\\server\share\)"},
    {LR"(\\server\share\..\)", LR"(\\server\share\)", "unless one is behind them"},
    {LR"(\\server\share\ )", LR"(\\server\share\)", "a blank leaves the separator"},
    {LR"(\\server\share\...)", LR"(\\server\share\)", "and so do three dots"},
    {LR"(\\server\share\a. )", LR"(\\server\share\a)", "the end is trimmed"},
    {LR"(\\server\share.\a)", LR"(\\server\share.\a)", "but not in the root"},
    {LR"(\\server\..\a)", LR"(\\server\..\a)", "where dots are names"},
    {LR"(\\..)", LR"(\\)", "the end is trimmed, and if it is the server", LR"(\\..)"},
    {LR"(\\.. .)", LR"(\\)", "with blanks among it", LR"(\\.. .)"},
    {LR"(\\...)", LR"(\\)", "however many", LR"(\\...)"},
    {LR"(\\server\..)", LR"(\\server\)", "or the share", LR"(\\server\..)"},
    {LR"(\\server\.)", LR"(\\server\)", "with one stop", LR"(\\server\.)"},
    {LR"(//server/...)", LR"(\\server\)", "or with more", LR"(\\server\...)"},
    {LR"(\\server. .)", LR"(\\server)", "a server's name", LR"(\\server. .)"},
    {LR"(\\spam\eggs. . .)", LR"(\\spam\eggs)", "and a share's", LR"(\\spam\eggs. . .)"},
    {LR"(\\spam\eggs. . .\)", LR"(\\spam\eggs. . .\)", "but not ahead of a separator"},
    {LR"(\\spam. \eggs)", LR"(\\spam. \eggs)", "nor within"},
    {LR"(\\server\share\\a)", LR"(\\server\share\a)", "runs of separators are one",
     LR"(\\server\share\\a)"},
    {LR"(//server//share)", LR"(\\server\share)", "also behind the server", LR"(\\server\\share)"},
    {LR"(//server//share/..)", LR"(\\server\)", "but then the share is no part of the root",
     LR"(\\server\\share\)"},
    {LR"(\\\server\share\..)", LR"(\\\server)", "three separators: an empty server's share",
     LR"(\\\server\)"},
    {LR"(\\\server\share\)", LR"(\\\server\share\)", "they stay"},
    {LR"(\\\\server\share\)", LR"(\\\server\share\)", "of more, three stay",
     LR"(\\\\server\share\)"},
    {LR"(\\server)", LR"(\\server)", "a server alone"},
    {LR"(\\server\)", LR"(\\server\)", "with a separator"},
    {LR"(\\server\share\nul)", LR"(\\server\share\nul)", "no device on a share"},
    {LR"(\\.server\share\..\a)", LR"(\\.server\share\a)", "no prefix of devices"},
};

constexpr text_row prefixed_cases[] = {
    {LR"(\\?\C:\)", LR"(\\?\C:\)", "a root directory"},
    {LR"(\\?\C:\a\..\b)", LR"(\\?\C:\b)", "this call resolves dots behind a prefix, too"},
    {LR"(\\?\C:\a. )", LR"(\\?\C:\a)", "and trims"},
    {LR"(\\?\C:\.)", LR"(\\?\C:)", "the root is the prefix alone"},
    {LR"(\\?\C:\..)", LR"(\\?\)", "so that the drive is below it"},
    {LR"(\\?\C:\..\..)", LR"(\\?\)", "and nothing above"},
    {LR"(\\?\C:\..\)", LR"(\\?\)", "with a separator behind"},
    {LR"(\\?\C:\ )", LR"(\\?\C:\)", "a blank"},
    {LR"(\\?\UNC\server\share\..)", LR"(\\?\UNC\server)", "share and server are below it"},
    {LR"(\\?\UNC\server\share\..\..\..)", LR"(\\?\)", "as are all"},
    {LR"(//?/C:/a/./b)", LR"(\\?\C:\a\b)", "either separator"},
    {LR"(//?/)", LR"(\\?\)", "the prefix alone"},
    {LR"(//./)", LR"(\\.\)", "the other prefix alone"},
    {LR"(\\.)", LR"(\\.\)", "without its separator"},
    {LR"(\\.\pipe\)", LR"(\\.\pipe\)", "a separator at the end stays"},
    {LR"(\\.\C:\con)", LR"(\\.\C:\con)", "no device is looked for behind a prefix"},
};

constexpr text_row device_cases[] = {
    {L"CON", LR"(\\.\CON)", "a device"},
    {L"nul", LR"(\\.\nul)", "as it is typed"},
    {L"PRN:", LR"(\\.\PRN)", "with a colon"},
    {L"aux  ", LR"(\\.\aux)", "with blanks"},
    {L"lpt9", LR"(\\.\lpt9)", "a port"},
    {L"COM1", LR"(\\.\COM1)", "another"},
    {L"conin$", LR"(\\.\conin$)", "the console's input"},
    {L"CONOUT$", LR"(\\.\CONOUT$)", "and its output"},
    {LR"(C:\con\)", LR"(C:\con\)", "no device: the last element is empty"},
    {LR"(C:\con\a)", LR"(C:\con\a)", "no device: not the last element"},
    {LR"(C:\console)", LR"(C:\console)", "no device: another name"},
    {LR"(C:\com0)", LR"(C:\com0)", "no port has this number"},
    {LR"(C:\com10)", LR"(C:\com10)", "nor two digits"},
};

TEST(FullPathName, Drives)
{
    expect_full_paths(drive_cases);
}

TEST(FullPathName, Trimming)
{
    expect_full_paths(trimming_cases);
}

TEST(FullPathName, Network)
{
    expect_full_paths(network_cases);
}

TEST(FullPathName, Prefixed)
{
    expect_full_paths(prefixed_cases);
}

TEST(FullPathName, Devices)
{
    expect_full_paths(device_cases);
}

/// Texts that end in the name of a device, and what they mean where devices stand alone. Where
/// they stand anywhere, it is the device. `@` is the current directory.
void expect_device(std::wstring const &device, std::initializer_list<text_row> rows)
{
    workspace space;
    space.change_directory(space.root());
    for (text_row const &row : rows) {
        std::wstring const alone = text_in(space, row.expected);
        EXPECT_EQ(full_path(row.text), finds_devices_anywhere() ? LR"(\\.\)" + device : alone)
            << row.text << ": " << row.why;
    }
}

TEST(FullPathName, DevicesInDirectoriesAndWithExtensions)
{
    expect_device(L"con", {{L"con:alt", LR"(@\con:alt)", "with a stream"},
                           {L"con .txt", LR"(@\con .txt)", "with an extension and a blank"},
                           {LR"(1:con)", LR"(1:\con)", "on a drive"},
                           {LR"(::con)", LR"(::\con)", "on a drive with no letter"},
                           {LR"(C:\dir\con)", LR"(C:\dir\con)", "in a directory"},
                           {LR"(C:\con)", LR"(C:\con)", "in the root"},
                           {LR"(.\con)", LR"(@\con)", "here"},
                           {LR"(dir\..\con.)", LR"(@\con)", "or elsewhere"}});
    expect_device(L"prn", {{L"prn.json", LR"(@\prn.json)", "with an extension"},
                           {LR"(dir/prn.)", LR"(@\dir\prn)", "with a full stop"}});
    expect_device(L"nul", {{LR"(dir/nul.txt)", LR"(@\dir\nul.txt)", "behind a slash"}});
    expect_device(L"lpt1", {{LR"(C:\dir\lpt1:)", LR"(C:\dir\lpt1:)", "with a colon"}});
    expect_device(L"aux", {{LR"(C:\missing\aux)", LR"(C:\missing\aux)", "in no directory"}});
}

TEST(FullPathName, OnlyNulIsKeptInAllDirectories)
{
    EXPECT_EQ(full_path(LR"(dir\nul)"), LR"(\\.\nul)");
    EXPECT_EQ(full_path(LR"(C:\missing\NUL. .)"), LR"(\\.\NUL)") << "with what is trimmed";
}

// Wine knows only the plain digits.
TEST(FullPathName, PortsWithRaisedDigits)
{
    workspace space;
    space.change_directory(space.root());
    for (wchar_t const digit : {L'\x00B9', L'\x00B2', L'\x00B3'}) {
        std::wstring const name = std::wstring(L"com") + digit;
        EXPECT_EQ(full_path(name), runs_under_wine() ? in(space, name) : LR"(\\.\)" + name);
    }
}

constexpr text_row relative_cases[] = {
    {L"name", LR"(@\name)", "a name"},
    {LR"(a\b\)", LR"(@\a\b\)", "with a separator at the end"},
    {L"a/b", LR"(@\a\b)", "with a slash"},
    {L".", L"@", "the directory itself has no separator at its end"},
    {LR"(.\)", LR"(@\)", "unless there is one"},
    {LR"(..\here\a)", LR"(@\a)", "up and down again"},
    {L" name", LR"(@\ name)", "a blank ahead belongs to the name"},
    {L"...", LR"(@\)", "three dots are all trimmed"},
    {L"name. .", LR"(@\name)", "the end is trimmed"},
};

TEST(FullPathName, StartsFromTheCurrentDirectory)
{
    expect_full_paths(relative_cases);
    workspace space;
    space.make_directory(space.path(u"here"));
    space.change_directory(space.path(u"here"));
    EXPECT_EQ(full_path(L".."), wide(space.root()));
}

TEST(FullPathName, StartsFromTheRootOfTheCurrentDrive)
{
    workspace space;
    space.change_directory(space.root());
    std::wstring const drive = wide(space.root()).substr(0, 2);
    EXPECT_EQ(full_path(LR"(\)"), drive + LR"(\)");
    EXPECT_EQ(full_path(LR"(\name)"), drive + LR"(\name)");
    EXPECT_EQ(full_path(LR"(\..\name\)"), drive + LR"(\name\)");
    EXPECT_EQ(full_path(LR"(\a\..)"), drive + LR"(\)");
}

// Wine takes a slash ahead for a pathname of the host, which it shows on a drive
// of its own.
TEST(FullPathName, TakesASlashAheadForABackslash)
{
    workspace space;
    space.change_directory(space.root());
    std::wstring const drive = runs_under_wine() ? L"Z:" : wide(space.root()).substr(0, 2);
    EXPECT_EQ(full_path(L"/name//a"), drive + LR"(\name\a)");
}

TEST(FullPathName, StartsFromTheCurrentDirectoryOfTheSameDrive)
{
    workspace space;
    space.change_directory(space.root());
    std::wstring const drive = wide(space.root()).substr(0, 2);
    EXPECT_EQ(full_path(drive + L"name"), in(space, L"name"));
    EXPECT_EQ(full_path(drive + LR"(a\..)"), wide(space.root()));
    std::wstring const lower = {static_cast<wchar_t>(drive[0] | 0x20), L':'};
    EXPECT_EQ(full_path(lower + L"name"), in(space, L"name")) << "in the directory's own case";
    // Wine leaves a separator behind
    std::wstring const bare = wide(space.root()) + (runs_under_wine() ? LR"(\)" : L"");
    EXPECT_EQ(full_path(drive), bare);
}

TEST(FullPathName, StartsFromAShareAsFromADrive)
{
    workspace space;
    NEEDS(space.has_share(), "there is no share to stand in");
    space.make_directory(space.share_root() + u"\\here");
    std::wstring const root = wide(space.share_root());
    ASSERT_EQ(set_current_directory(root + LR"(\here)"), success);
    EXPECT_EQ(full_path(L"name"), root + LR"(\here\name)");
    EXPECT_EQ(full_path(L".."), root);
    EXPECT_EQ(full_path(LR"(..\..\..\..\name)"), LR"(\\fl-server\share\name)");
    EXPECT_EQ(full_path(LR"(\name)"), LR"(\\fl-server\share\name)");
}

/// A variable of the environment, put back as it was at the end.
class scoped_variable
{
public:
    scoped_variable(std::wstring name, std::optional<std::wstring> const &value)
        : name_(std::move(name)), former_(get())
    {
        ::SetEnvironmentVariableW(name_.c_str(), value ? value->c_str() : nullptr);
    }
    scoped_variable(scoped_variable const &) = delete;
    scoped_variable &operator=(scoped_variable const &) = delete;
    ~scoped_variable()
    {
        ::SetEnvironmentVariableW(name_.c_str(), former_ ? former_->c_str() : nullptr);
    }

    std::optional<std::wstring> get() const
    {
        std::wstring buffer(1000, L'\0');
        DWORD const length = ::GetEnvironmentVariableW(name_.c_str(), buffer.data(), 1000);
        if (length == 0)
            return std::nullopt;
        buffer.resize(length);
        return buffer;
    }

private:
    std::wstring name_;
    std::optional<std::wstring> former_;
};

// The C runtime notes each drive's own current directory in a variable `=X:`.
TEST(FullPathName, FindsTheDirectoryOfAnotherDriveInTheEnvironment)
{
    workspace space;
    space.change_directory(space.root());
    scoped_variable const variable(L"=Q:", wide(space.root()));
    EXPECT_EQ(full_path(L"Q:name"), in(space, L"name")) << "even on yet another drive";
    EXPECT_EQ(full_path(L"q:a/.."), wide(space.root())) << "in either case";
}

TEST(FullPathName, IgnoresTheVariableOfTheCurrentDrive)
{
    workspace space;
    space.make_directory(space.path(u"here"));
    space.change_directory(space.root());
    std::wstring const drive = wide(space.root()).substr(0, 2);
    scoped_variable const variable(L'=' + drive, in(space, L"here"));
    EXPECT_EQ(full_path(drive + L"name"), in(space, L"name"));
}

TEST(FullPathName, StartsFromTheRootOfADriveThatNobodyUsed)
{
    scoped_variable const variable(L"=Q:", std::nullopt);
    EXPECT_EQ(full_path(L"Q:name"), LR"(Q:\name)");
    EXPECT_EQ(full_path(L"Q:"), LR"(Q:\)");
    // Windows notes that; Wine does not.
    EXPECT_EQ(variable.get(), runs_under_wine() ? std::nullopt : std::optional(LR"(Q:\)"));
}

// Windows puts a variable right that means no directory; Wine takes any.
TEST(FullPathName, DoesNotTrustTheEnvironment)
{
    workspace space;
    space.make_file(space.path(u"file"));
    for (wchar_t const *name : {L"missing", L"file"}) {
        scoped_variable const variable(L"=Q:", in(space, name));
        std::wstring const wine = in(space, name) + LR"(\a)";
        EXPECT_EQ(full_path(L"Q:a"), runs_under_wine() ? wine : LR"(Q:\a)");
        EXPECT_EQ(variable.get(), runs_under_wine() ? in(space, name) : LR"(Q:\)");
    }
}

TEST(FullPathName, FailsWithoutText)
{
    // Wine leaves the last error alone.
    DWORD const code = expected(ERROR_INVALID_NAME, untouched);
    for (wchar_t const *text : {L"", L" ", L"    "}) {
        wchar_t buffer[] = L"untouched";
        EXPECT_EQ(outcome_of([&] { return ::GetFullPathNameW(text, 9, buffer, nullptr) != 0; }),
                  code);
        EXPECT_STREQ(buffer, L"untouched");
    }
}

TEST(FullPathName, SaysHowMuchRoomItNeeds)
{
    wchar_t const *const text = LR"(C:\dir\.\file)"; // 11 units, once it is full
    wchar_t buffer[20];
    struct
    {
        DWORD room, answer;
        char const *why;
    } const rows[] = {
        {0, 12, "no room: the size with the NUL"}, {1, 12, "little room: the same"},
        {11, 12, "the NUL doesn't fit"},           {12, 11, "it fits: the length without the NUL"},
        {20, 11, "more room than needed"},
    };
    for (auto const &row : rows) {
        std::fill(std::begin(buffer), std::end(buffer), L'#');
        EXPECT_EQ(::GetFullPathNameW(text, row.room, buffer, nullptr), row.answer) << row.why;
        if (row.answer == 11) {
            EXPECT_STREQ(buffer, LR"(C:\dir\file)") << row.why;
        } else {
            EXPECT_EQ(buffer[0], L'#') << row.why;
        }
    }
    EXPECT_EQ(::GetFullPathNameW(text, 0, nullptr, nullptr), 12U);
}

TEST(FullPathName, PointsAtTheLastElement)
{
    wchar_t buffer[40];
    wchar_t *part = nullptr;
    ASSERT_EQ(::GetFullPathNameW(LR"(C:\dir\.\file)", 40, buffer, &part), 11U);
    EXPECT_EQ(part, buffer + 7);
    ASSERT_EQ(::GetFullPathNameW(LR"(C:\dir\)", 40, buffer, &part), 7U);
    EXPECT_EQ(part, nullptr) << "a directory by its separator";
    ASSERT_EQ(::GetFullPathNameW(L"nul", 40, buffer, &part), 7U);
    EXPECT_EQ(part, nullptr) << "a device";
}

// The system's texts count their bytes in 16 bits. Wine's have no such limit.
TEST(FullPathName, HasALimit)
{
    workspace space;
    space.change_directory(space.root());
    auto const outcome = [](std::wstring const &text) {
        return outcome_of(
            [&] { return ::GetFullPathNameW(text.c_str(), 0, nullptr, nullptr) != 0; });
    };
    auto const text_of = [](std::size_t length) {
        return LR"(C:\)" + std::wstring(length - 3, L'n');
    };
    EXPECT_EQ(full_path(text_of(32764)), text_of(32764));
    EXPECT_EQ(outcome(text_of(32765)), success);
    EXPECT_EQ(outcome(text_of(32768)), expected(ERROR_FILENAME_EXCED_RANGE, success));
    EXPECT_EQ(outcome(LR"(C:\)" + std::wstring(40000, L'\\')),
              expected(ERROR_FILENAME_EXCED_RANGE, success))
        << "what it would become doesn't matter";
    EXPECT_EQ(outcome(std::wstring(32765, L'n')), expected(ERROR_INVALID_NAME, success))
        << "a text that becomes too long";
}

} // namespace

} // namespace contract
