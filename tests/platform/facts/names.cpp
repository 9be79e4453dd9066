#include "platform/facts/facts.hpp"

namespace contract::facts {

namespace {

constexpr char python[] = "CPython, Lib/test/test_ntpath.py, test_abspath";
constexpr char dotnet[] = ".NET runtime, PathTests_Windows.cs, GetFullPath_*";
constexpr char dotnet_unc[] = ".NET runtime, PathTests_Windows.cs, GetFullPath_UNC_Valid";
constexpr char stl[] = "Microsoft STL, tests/std P0218R1_filesystem, test_absolute";
constexpr char wil[] = "WIL, tests/FileSystemTests.cpp, VerifyGetFullPathName";
constexpr char boost[] = "Boost.Filesystem, test/operations_test.cpp";
constexpr char go[] = "Go, src/os/os_windows_test.go and internal/filepathlite";
constexpr char docs[] = "dotnet/docs, pull request 42370, and its issue 41193";
constexpr char measured[] = "FerroxLabs/wayland-core, issue 238, measured on Windows 11 26200";
constexpr char wine_path[] = "Wine, dlls/ntdll/tests/path.c, also run on Windows";
constexpr char winfsp[] = "WinFsp, winfsp-tests/create-test.c, create_test";
constexpr char stl_status[] = "Microsoft STL, tests/std P0218R1_filesystem, test_status";
constexpr char dotnet_io[] = ".NET runtime, System.IO.FileSystem.Tests";

constexpr char keeps_end[] = "keeps the end of a server or share as it is";
constexpr char adds_separator[] = "adds a backslash";
constexpr char no_code[] = "leaves the last error alone";
constexpr char drops_a_stop[] = "drops one of several full stops";
constexpr char no_limit[] = "knows no limit";
constexpr char no_servers[] = "doesn't ask the network";

constexpr fact rows[] = {
    // full pathnames
    {"full C:\\ -> C:\\", python, "a root"},
    {"full \\\\?\\C:////spam////eggs.~.~. -> \\\\?\\C:\\spam\\eggs", python, "with a long prefix"},
    {"full \\\\.\\C:////spam////eggs.~.~. -> \\\\.\\C:\\spam\\eggs", python, "as a device"},
    {"full C:/spam.~.~. -> C:\\spam", python, "the end is trimmed"},
    {"full C:\\spam.~.~. -> C:\\spam", python, "with either separator"},
    {"full //.. -> \\\\", python, "also where it is a server", keeps_end},
    {"full \\\\..\\ -> \\\\..\\", python, "but not ahead of a separator"},
    {"full \\\\..\\.. -> \\\\..\\", python, "or where it is a share", keeps_end},
    {"full \\\\..\\..\\ -> \\\\..\\..\\", python, "with a separator both stay"},
    {"full //server -> \\\\server", python, "a server"},
    {"full //server/ -> \\\\server\\", python, "with a separator"},
    {"full //server/.. -> \\\\server\\", python, "two full stops for a share", keeps_end},
    {"full \\\\server\\..\\ -> \\\\server\\..\\", python, "with a separator they stay"},
    {"full //server/share -> \\\\server\\share", python, "a share"},
    {"full //server/share/ -> \\\\server\\share\\", python, "with a separator"},
    {"full \\\\server\\share\\ -> \\\\server\\share\\", python, "with a backslash"},
    {"full //...~.~. -> \\\\", python, "stops and blanks", keeps_end},
    {"full //..~.~.~. -> \\\\", python, "in any order", keeps_end},
    {"full //../...~.~. -> \\\\..\\", python, "for a share, too", keeps_end},
    {"full //../..~.~.~. -> \\\\..\\", python, "in any order", keeps_end},
    {"full \\\\spam\\eggs.~.~. -> \\\\spam\\eggs", python, "a share's name", keeps_end},
    {"full ? -> @\\?", python, "a wildcard is a name here"},
    {"full _ =123", stl, "no text", no_code},
    {"full ~ =123", python, "a blank", no_code},
    {"full x:/cat/dog/../elk -> x:\\cat\\elk", stl, "slashes and full stops"},
    {"full {a*32768} =206", wil, "more than 32,765 units", no_limit},
    {"full \\\\?\\x:\\{a*40000} =206", stl, "with a long prefix, too", no_limit},
    {"full C:\\Test~ -> C:\\Test", dotnet, "a blank at the end"},
    {"full C:\\Test~~~ -> C:\\Test", dotnet, "three"},
    {"full C:\\. -> C:\\", dotnet, "a root with a full stop"},
    {"full C:\\.. -> C:\\", dotnet, "with two"},
    {"full C:\\..\\.. -> C:\\", dotnet, "twice"},
    {"full C:\\A\\.. -> C:\\", dotnet, "up to it"},
    {"full C:\\..\\..\\A\\.. -> C:\\", dotnet, "beyond and back"},
    {"full .~\\ -> @\\.~\\", dotnet, "a stop and a blank are a name"},
    {"full ...\\ -> @\\...\\", dotnet, "and so are three stops", drops_a_stop},
    {"full ..~\\ -> @\\..~\\", dotnet, "or two and a blank"},
    {"full \\\\LOCALHOST\\share\\test.txt.~~SS -> \\\\LOCALHOST\\share\\test.txt.~~SS", dotnet_unc,
     "a file on a share"},
    {"full \\\\LOCALHOST\\share1 -> \\\\LOCALHOST\\share1", dotnet_unc, "a share"},
    {"full \\\\LOCALHOST\\share3\\dir -> \\\\LOCALHOST\\share3\\dir", dotnet_unc, "a directory"},
    {"full \\\\LOCALHOST\\share4\\. -> \\\\LOCALHOST\\share4", dotnet_unc, "a full stop behind it",
     adds_separator},
    {"full \\\\LOCALHOST\\share5\\.. -> \\\\LOCALHOST\\share5", dotnet_unc, "two of them",
     adds_separator},
    {"full \\\\LOCALHOST\\share6\\~~~~ -> \\\\LOCALHOST\\share6\\", dotnet_unc, "blanks"},
    {"full \\\\LOCALHOST\\~~share7\\ -> \\\\LOCALHOST\\~~share7\\", dotnet_unc, "blanks ahead"},
    {"full \\\\.\\UNC\\LOCALHOST\\~~shareE\\ -> \\\\.\\UNC\\LOCALHOST\\~~shareE\\", dotnet_unc,
     "as a device"},
    {"full \\\\.\\UNC\\LOCALHOST\\shareF\\test.txt -> \\\\.\\UNC\\LOCALHOST\\shareF\\test.txt",
     dotnet_unc, "a file"},
    {"full \\\\.\\UNC\\LOCALHOST\\shareG -> \\\\.\\UNC\\LOCALHOST\\shareG", dotnet_unc, "a share"},
    {"full \\\\.\\UNC\\LOCALHOST\\shareH\\dir -> \\\\.\\UNC\\LOCALHOST\\shareH\\dir", dotnet_unc,
     "a directory"},
    {"full \\\\.\\UNC\\LOCALHOST\\shareI\\.~ -> \\\\.\\UNC\\LOCALHOST\\shareI\\", dotnet_unc,
     "a stop and a blank"},
    {"full \\\\.\\UNC\\LOCALHOST\\shareJ\\..~ -> \\\\.\\UNC\\LOCALHOST\\shareJ\\", dotnet_unc,
     "two and a blank"},
    {"full \\\\.\\UNC\\LOCALHOST\\shareK\\~~~~ -> \\\\.\\UNC\\LOCALHOST\\shareK\\", dotnet_unc,
     "blanks"},
    {"full /foo -> C:\\foo", boost, "rooted", "goes by the drive that shows the host"},
    {"full foo -> @\\foo", boost, "relative"},
    {"full \\\\net\\share\\folder -> \\\\net\\share\\folder", boost, "on a server"},
    {"full ReadMe.txt -> @\\ReadMe.txt", wil, "a file here"},

    // devices
    {"full nul -> \\\\.\\nul", python, "NUL by itself"},
    {"full C:/nul -> \\\\.\\nul", python, "in any directory, in every edition"},
    {"full C:\\nul -> \\\\.\\nul", python, "with either separator"},
    {"full C:\\nul.~.~. -> \\\\.\\nul", python, "with what is trimmed"},
    {"full NUL -> \\\\.\\NUL", go, "in upper case"},
    {"full CON -> \\\\.\\CON", go, "CON by itself"},
    {"full PRN -> \\\\.\\PRN", go, "PRN"},
    {"full aux -> \\\\.\\aux", go, "AUX"},
    {"full com1 -> \\\\.\\com1", go, "a port"},
    {"full LPT9 -> \\\\.\\LPT9", go, "another"},
    {"full CONIN$ -> \\\\.\\CONIN$", go, "the console's input"},
    {"full conout$ -> \\\\.\\conout$", go, "and output"},
    {"full com0 -> @\\com0", go, "no port"},
    {"full com10 -> @\\com10", go, "nor this"},
    {"full nul.txt -> \\\\.\\nul", docs, "an extension changes nothing up to Windows 10", nullptr,
     on::devices_anywhere},
    {"full nul.txt -> @\\nul.txt", docs, "since Windows 11 it makes a file", nullptr,
     on::devices_alone},
    {"full CON.TXT -> \\\\.\\CON", docs, "of every device", nullptr, on::devices_anywhere},
    {"full CON.TXT -> @\\CON.TXT", docs, "of every device", nullptr, on::devices_alone},
    {"full @\\CON -> \\\\.\\CON", measured, "in a directory", nullptr, on::devices_anywhere},
    {"full @\\CON -> @\\CON", measured, "in a directory", nullptr, on::devices_alone},
    {"full @\\AUX -> @\\AUX", measured, "AUX", nullptr, on::devices_alone},
    {"full @\\PRN -> @\\PRN", measured, "PRN", nullptr, on::devices_alone},
    {"full @\\COM1 -> @\\COM1", measured, "a port", nullptr, on::devices_alone},
    {"full @\\LPT1 -> @\\LPT1", measured, "another", nullptr, on::devices_alone},
    {"full @\\aux.txt -> @\\aux.txt", measured, "with an extension", nullptr, on::devices_alone},
    {"full @\\NUL.txt -> @\\NUL.txt", measured, "also of NUL", nullptr, on::devices_alone},
    {"full @\\NUL -> \\\\.\\NUL", measured, "but not without one"},
    {"open @\\NUL.txt w 0 new; find NUL.txt -> NUL.txt; delete NUL.txt", measured,
     "a file like any other", nullptr, on::devices_alone},
    {"mkdir @\\con; find * -> .|..|con; rmdir @\\con", measured, "a directory, too", nullptr,
     on::devices_alone},
    {"open nul rw rwd existing; open NUL w 0 always", go, "NUL is always there"},
    {"open nul w 0 new =80", go, "so it isn't new", "makes it, as it were"},
    {"full C:\\nul\\ -> C:\\nul\\", python, "a directory is no device"},
    {"full missing\\nul -> \\\\.\\nul", wine_path, "whatever its directory"},
    {"open missing\\nul r rwd existing =3", wine_path, "which has to be there"},
    {"attributes missing\\nul =3", wine_path, "for every call"},
    {"open @\\nul rw rwd existing", wine_path, "as it is here"},
    {"file d\\x; open d\\nul r rwd existing", wine_path, "or there"},
    {"file f; open f\\nul r rwd existing =3", wine_path, "a file is none"},
    {"open \\\\.\\nul rw rwd existing", go, "as a device"},
    {"open ?@\\nul r rwd existing =2", go, "as it stands, it is a file that isn't there"},
    {"open ?@\\nul w 0 new; names _ -> nul; delete ?@\\nul; names _ ->", go, "or is"},
    {"open ?@\\con.txt w 0 new; names _ -> con.txt; delete ?@\\con.txt", go, "of whatever name"},

    // names that are trimmed, and names that aren't
    {"open f. w 0 new; names _ -> f", dotnet_io, "a full stop at the end goes"},
    {"open f~ w 0 new; names _ -> f", dotnet_io, "and a blank"},
    {"open f.~.~ w 0 new; names _ -> f", dotnet_io, "and all of them"},
    {"open ?@\\f. w 0 new; names _ -> f.", dotnet_io, "unless they are meant to stay"},
    {"open ?@\\f~ w 0 new; names _ -> f~", dotnet_io, "either"},
    {"mkdir f.; names _ -> f", dotnet_io, "of a directory"},
    {"mkdir ?@\\f.; names _ -> f.; attributes ?@\\f. -> D", dotnet_io, "either way"},
    {"mkdir ?@\\Foo.; rmdir Foo. =2; rmdir ?@\\Foo.",
     "WIL, tests/FileSystemTests.cpp, "
     "VerifyRemoveDirectoryRecursiveCanDeleteFoldersWithNonNormalizedNames",
     "which only the prefix reaches"},
    {"dir Foo; rmdir Foo.",
     "WIL, tests/FileSystemTests.cpp, "
     "VerifyRemoveDirectoryRecursiveCanDeleteFoldersWithNonNormalizedNames",
     "and the other takes what is trimmed"},
    {"dir Foo; rmdir ?@\\Foo. =2",
     "WIL, tests/FileSystemTests.cpp, "
     "VerifyRemoveDirectoryRecursiveCanDeleteFoldersWithNonNormalizedNames",
     "as it stands, it is another"},
    {"open .f w 0 new; names _ -> .f", dotnet_io, "a full stop ahead stays"},
    {"open ~f w 0 new; names _ -> ~f", dotnet_io, "and a blank"},
    {"open a..b w 0 new; names _ -> a..b", dotnet_io, "and stops within"},
    {"mkdir ...\\; names _ -> ...", dotnet, "three, with a separator behind them", adds_separator},

    // roots with backslashes to spare
    {"mkdir d; attributes \\\\?\\C:\\\\ -> D", winfsp, "one more at the root"},
    {"open \\\\?\\C:\\\\no-such-file r rw existing =2", winfsp, "a name behind it is looked for"},
    {"open \\\\?\\C:\\\\\\no-such-file r rw existing =123", winfsp, "two more are wrong"},
    {"open ?@\\\\f rw rw new =123", winfsp, "and one anywhere else"},
    {"open ?@\\missing\\\\f rw rw new =123", winfsp, "whatever is there"},
    {"open @\\\\\\f rw rw new; names _ -> f", winfsp, "without the prefix they are one"},

    // servers
    {"attributes \\\\fl-dead-server\\share\\file =53", go, "a server that isn't there", no_servers},
    {"attributes \\\\fl-dead-server\\share =53", stl_status, "nor its share", no_servers},
    {"open \\\\fl-dead-server\\share\\f r rwd existing =53", boost, "nor a file there", no_servers},
    {"delete \\\\fl-dead-server\\share\\f =53", boost, "to be deleted", no_servers},
    {"rmdir \\\\fl-dead-server\\share\\d =53", boost, "or removed", no_servers},
    {"mkdir \\\\fl-dead-server\\share\\d =53", stl_status, "or made", no_servers},
    {"find \\\\fl-dead-server\\share\\* =53", stl_status, "or listed", no_servers},
    {"cd \\\\fl-dead-server\\share =53", boost, "or to stand in", no_servers},
    {"space \\\\fl-dead-server\\share\\ =53",
     "Microsoft STL, tests/std P0218R1_filesystem, test_space", "or to have room", no_servers},
    {"file f; copy f \\\\fl-dead-server\\share\\f =53", boost, "to be copied to", no_servers},
    {"file f; move f \\\\fl-dead-server\\share\\f =53", boost, "or moved to", no_servers},
    {"attributes \\\\?\\UNC\\fl-dead-server\\share\\f =53", stl_status, "with a long prefix",
     no_servers},
    {"attributes \\\\fl-server\\fl-missing-share\\f =67", "Microsoft, System Error Codes",
     "a share that isn't there", no_servers},
    {"open \\\\fl-server\\fl-missing-share\\f r rwd existing =67", "Microsoft, System Error Codes",
     "whoever asks", no_servers},
    {"file $\\f x; content $\\f -> x; attributes $\\f -> A; delete $\\f; attributes $\\f =2", go,
     "one that is there"},
    {"file $\\d\\f; find $\\d\\* -> .|..|f; rmdir $\\d =145; delete $\\d\\f; rmdir $\\d", go,
     "with its directories"},
    {"file $\\f x; content ?$\\f -> x", go, "with a long prefix"},
    {"file f x; copy f $\\f; content $\\f -> x", go, "a copy to it"},
    {"file f; hard $\\f f =17", "Microsoft, CreateHardLinkW", "no hard link to it",
     "takes a share for the same disk"},
    {"file f; move f $\\f =17; move f $\\f c; attributes $\\f -> A; attributes f =2",
     "Microsoft, MoveFileExW", "a file is moved there by a copy",
     "takes a share for the same disk"},
    {"dir d; move d $\\d c =5", "Microsoft, MoveFileExW", "a directory isn't",
     "takes a share for the same disk"},

    // drives that aren't there
    {"attributes Q:\\ =3", stl_status, "its root"},
    {"attributes Q:\\f =3", stl_status, "a file on it", "has another code"},
    {"open Q:\\f r rwd existing =3", stl_status, "to be opened", "has another code"},
    {"open Q:\\f w 0 new =3", stl_status, "or made", "has another code"},
    {"mkdir Q:\\d =3", stl_status, "a directory", "has another code"},
    {"find Q:\\* =3", stl_status, "its names"},
    {"delete Q:\\f =3", stl_status, "to be deleted", "has another code"},
};

TEST(Facts, Names)
{
    check(rows);
}

} // namespace

} // namespace contract::facts
