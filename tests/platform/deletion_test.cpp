#include "platform/contract.hpp"

namespace contract {

namespace {

TEST(DeletingFiles, Outcomes)
{
    auto const remove = [](workspace const &space, std::wstring const &name) {
        DWORD const code = delete_file(name);
        EXPECT_EQ(space.exists(space.path(u"file")), code != success) << name;
        EXPECT_TRUE(space.exists(space.path(u"readonly"))) << name;
        EXPECT_TRUE(space.is_directory(space.path(u"dir\\inner"))) << name;
        return code;
    };
    expect_codes(fill, remove, names_of_file, missing_names, missing_roots, as_it_stands, no_names);
    expect_code(fill, remove, success, {LR"(@\file. .)"});
    // a file is no directory
    expect_code(fill, remove, ERROR_INVALID_NAME, {LR"(@\file\)"});
    // directories, and what is read-only
    expect_code(fill, remove, ERROR_ACCESS_DENIED,
                {LR"(@\dir)", LR"(@\dir\)", LR"(@\dir\inner)", L".", LR"(C:\)", LR"(@\readonly)"});
    expect_code(fill, remove, expected(ERROR_INVALID_FUNCTION, ERROR_INVALID_PARAMETER), {L"nul"});
}

TEST(DeletingFiles, TakesADotAtTheEndOfAPrefixedName)
{
    workspace space;
    space.make_file(space.path(u"file"));
    space.make_file(space.path(u"file."));
    EXPECT_EQ(delete_file(LR"(\\?\)" + in(space, L"file.")), success);
    EXPECT_EQ(space.entries(space.root()), std::vector<std::u16string>{u"file"});
}

TEST(DeletingFiles, WorksOnAShare)
{
    workspace space;
    NEEDS(space.has_share(), "there is no share");
    space.make_file(space.share_root() + u"\\file");
    EXPECT_EQ(delete_file(wide(space.share_root()) + LR"(\FILE)"), success);
    EXPECT_EQ(delete_file(wide(space.share_root()) + LR"(\FILE)"), DWORD{ERROR_FILE_NOT_FOUND});
}

TEST(DeletingFiles, NeedsALongPrefixFrom260Units)
{
    expect_limit_of_260([](std::wstring const &name) {
        DWORD const code = delete_file(name);
        bool const is_there = get_file_attributes(with_long_prefix(name)) == success;
        EXPECT_EQ(is_there, code != success) << name;
        return code;
    });
}

TEST(DeletingFiles, WantsOthersToShareThat)
{
    workspace space;
    fill(space);
    std::wstring const name = in(space, L"file");
    handle reader = open(name, {.share = FILE_SHARE_READ | FILE_SHARE_WRITE});
    EXPECT_EQ(delete_file(name), DWORD{ERROR_SHARING_VIOLATION});
    reader = look_at(name, 0);
    EXPECT_EQ(delete_file(name), success) << "who looks only is in nobody's way";
    reader.close();
    EXPECT_FALSE(space.exists(units(name)));
}

/// What the others see of a name that is gone but still open: nobody gets at it. Wine
/// shows it as before.
void expect_pending(std::wstring const &name, bool is_file = true)
{
    constexpr DWORD denied = ERROR_ACCESS_DENIED;
    DWORD const wine = is_file ? success : denied; // that is no call for directories
    EXPECT_EQ(code_of_open(name), expected(denied, wine));
    EXPECT_EQ(code_of_open(name, {.access = 0}), expected(denied, wine));
    EXPECT_EQ(code_of_open(name, anew), expected(denied, ERROR_FILE_EXISTS));
    EXPECT_EQ(create_directory(name), expected(denied, ERROR_ALREADY_EXISTS));
    EXPECT_EQ(get_file_attributes(name), expected(denied, success));
    EXPECT_EQ(set_attributes(name, FILE_ATTRIBUTE_NORMAL), expected(denied, success));
    EXPECT_EQ(delete_file(name), expected(denied, wine)) << "a second time";
    std::wstring const parent = name.substr(0, name.rfind(L'\\'));
    EXPECT_EQ(remove_directory(parent), DWORD{ERROR_DIR_NOT_EMPTY}) << "the name is still there";
}

/// What the others see of a name that is free although the file is still open.
void expect_free(std::wstring const &name)
{
    EXPECT_EQ(code_of_open(name), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(get_file_attributes(name), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(delete_file(name), DWORD{ERROR_FILE_NOT_FOUND}) << "a second time";
    EXPECT_EQ(create_directory(name), success) << "something else takes it";
    EXPECT_EQ(remove_directory(name), success);
}

/// DeleteFileW and RemoveDirectoryW free the name at once since Windows 10 version 1903.
void expect_deleted(std::wstring const &name, bool is_file = true)
{
    if (frees_names_at_once())
        expect_free(name);
    else
        expect_pending(name, is_file);
}

TEST(PendingDeletion, WaitsForTheLastHandle)
{
    workspace space;
    space.make_file(space.path(u"dir\\file"), "content");
    std::wstring const name = in(space, LR"(dir\file)");
    handle first = open(name);
    handle second = open(name);
    EXPECT_EQ(delete_file(name), success);
    expect_deleted(name);
    first.close();
    expect_deleted(name);
    FILE_STANDARD_INFO info = {};
    EXPECT_TRUE(::GetFileInformationByHandleEx(second.get(), FileStandardInfo, &info, sizeof info));
    EXPECT_EQ(info.DeletePending != FALSE, !runs_under_wine());
    EXPECT_EQ(info.NumberOfLinks, expected(0, 1));
    second.close();
    EXPECT_EQ(get_file_attributes(name), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(remove_directory(in(space, L"dir")), success);
}

TEST(DeletedNames, TakeANewFileBesideTheOld)
{
    if (!frees_names_at_once())
        return; // expected above
    workspace space;
    space.make_file(space.path(u"file"), "old");
    handle const reader = open(in(space, L"file"));
    EXPECT_EQ(delete_file(in(space, L"file")), success);
    space.make_file(space.path(u"file"), "new");
    char buffer[10] = {};
    DWORD got = 0;
    EXPECT_TRUE(::ReadFile(reader.get(), buffer, 10, &got, nullptr));
    EXPECT_EQ(std::string(buffer, got), "old");
    EXPECT_EQ(space.content(space.path(u"file")), "new");
}

TEST(DeletedNames, LeaveTheOtherNamesOfTheFile)
{
    workspace space;
    space.make_file(space.path(u"file"), "content");
    ASSERT_TRUE(
        ::CreateHardLinkW(in(space, L"other").c_str(), in(space, L"file").c_str(), nullptr));
    handle reader = open(in(space, L"other"));
    EXPECT_EQ(delete_file(in(space, L"file")), success);
    // Wine lets go of the name with the last handle of the file
    EXPECT_EQ(get_file_attributes(in(space, L"file")), expected(ERROR_FILE_NOT_FOUND, success));
    EXPECT_EQ(code_of_open(in(space, L"other")), success);
    reader.close();
    EXPECT_EQ(space.content(space.path(u"other")), "content");
}

// Servers aren't asked to free the name.
TEST(PendingDeletion, WaitsOnAShare)
{
    workspace space;
    NEEDS(space.has_share(), "there is no share");
    space.make_file(space.share_root() + u"\\dir\\file");
    std::wstring const name = wide(space.share_root()) + LR"(\dir\file)";
    handle reader = open(name);
    EXPECT_EQ(delete_file(name), success);
    expect_pending(name);
    reader.close();
    EXPECT_EQ(get_file_attributes(name), DWORD{ERROR_FILE_NOT_FOUND});
}

TEST(PendingDeletion, LeavesTheContentToItsReaders)
{
    workspace space;
    space.make_file(space.path(u"file"), "content");
    handle const reader = open(in(space, L"file"));
    EXPECT_EQ(delete_file(in(space, L"file")), success);
    char buffer[10] = {};
    DWORD got = 0;
    EXPECT_TRUE(::ReadFile(reader.get(), buffer, 10, &got, nullptr));
    EXPECT_EQ(std::string(buffer, got), "content");
}

template <typename Info>
DWORD dispose(handle const &opened, FILE_INFO_BY_HANDLE_CLASS which, Info info)
{
    return outcome_of([&] {
        return ::SetFileInformationByHandle(opened.get(), which, &info, sizeof info) != FALSE;
    });
}

DWORD mark(handle const &opened, bool gone = true)
{
    return dispose(opened, FileDispositionInfo, FILE_DISPOSITION_INFO{static_cast<BOOLEAN>(gone)});
}

/// FileDispositionInfoEx, which some headers show only to the newest targets.
constexpr auto disposition_with_flags = static_cast<FILE_INFO_BY_HANDLE_CLASS>(21);

DWORD mark_with(handle const &opened, DWORD flags)
{
    return dispose(opened, disposition_with_flags, FILE_DISPOSITION_INFO_EX{flags});
}

/// A handle that deletes the file when it is closed.
handle marked_for_deletion(std::wstring const &name)
{
    handle marked = look_at(name, DELETE);
    EXPECT_EQ(mark(marked), success);
    return marked;
}

TEST(MarkedHandles, DeleteWithTheLastClose)
{
    workspace space;
    space.make_file(space.path(u"dir\\file"));
    std::wstring const name = in(space, LR"(dir\file)");
    handle marked = marked_for_deletion(name);
    expect_pending(name);
    EXPECT_EQ(mark(marked), success) << "a second time";
    marked.close();
    EXPECT_FALSE(space.exists(units(name)));
}

TEST(MarkedHandles, CanBeUnmarked)
{
    workspace space;
    fill(space);
    std::wstring const name = in(space, L"file");
    handle marked = marked_for_deletion(name);
    EXPECT_EQ(mark(marked, false), success);
    EXPECT_EQ(get_file_attributes(name), success);
    marked.close();
    EXPECT_TRUE(space.exists(units(name)));
}

// They are the file's, and it may have other names.
TEST(MarkedHandles, LetAttributesBeSet)
{
    workspace space;
    space.make_file(space.path(u"file"));
    std::wstring const name = in(space, L"file");
    std::wstring const other = in(space, L"other");
    NEEDS(::CreateHardLinkW(other.c_str(), name.c_str(), nullptr), "this disk knows no hard links");
    handle marked = look_at(name, DELETE);
    handle changing = look_at(name, FILE_WRITE_ATTRIBUTES);
    EXPECT_EQ(mark(marked), success);
    FILE_BASIC_INFO read_only = {};
    read_only.FileAttributes = FILE_ATTRIBUTE_READONLY;
    EXPECT_EQ(dispose(changing, FileBasicInfo, read_only), success);
    changing.close();
    marked.close();
    EXPECT_FALSE(space.exists(units(name)));
    EXPECT_EQ(attributes_of(other) & FILE_ATTRIBUTE_READONLY, DWORD{FILE_ATTRIBUTE_READONLY});
    set_attributes(other, FILE_ATTRIBUTE_NORMAL);
}

TEST(MarkedHandles, DeleteAnEmptyDirectory)
{
    workspace space;
    space.make_directory(space.path(u"dir\\inner"));
    EXPECT_EQ(mark(look_at(in(space, L"dir"), DELETE)), DWORD{ERROR_DIR_NOT_EMPTY});
    EXPECT_EQ(mark(look_at(in(space, LR"(dir\inner)"), DELETE)), success);
    EXPECT_EQ(mark(look_at(in(space, L"dir"), DELETE)), success);
    EXPECT_FALSE(space.exists(space.path(u"dir")));
}

TEST(MarkedHandles, NeedTheRightAndAWritableFile)
{
    workspace space;
    fill(space);
    EXPECT_EQ(mark(look_at(in(space, L"file"), GENERIC_READ | GENERIC_WRITE)),
              DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(mark(look_at(in(space, L"readonly"), DELETE)), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_TRUE(space.exists(space.path(u"file")));
    EXPECT_TRUE(space.exists(space.path(u"readonly")));
}

/// Whether the class of information is known at all. Wine 8 doesn't know it.
bool knows_disposition_flags()
{
    workspace space;
    handle const opened = look_at(wide(space.root()), DELETE);
    return !runs_under_wine() ||
           mark_with(opened, FILE_DISPOSITION_FLAG_DO_NOT_DELETE) != ERROR_INVALID_PARAMETER;
}

TEST(MarkedHandles, TakeFlags)
{
    NEEDS(knows_disposition_flags(), "this Wine knows no flags of deletion");
    workspace space;
    fill(space);
    constexpr DWORD gone = FILE_DISPOSITION_FLAG_DELETE;
    constexpr DWORD at_once = gone | FILE_DISPOSITION_FLAG_POSIX_SEMANTICS;
    constexpr DWORD anyway = gone | FILE_DISPOSITION_FLAG_IGNORE_READONLY_ATTRIBUTE;
    EXPECT_EQ(mark_with(look_at(in(space, L"file"), GENERIC_ALL), gone), success);
    EXPECT_FALSE(space.exists(space.path(u"file")));
    EXPECT_EQ(mark_with(look_at(in(space, L"readonly"), GENERIC_READ), anyway),
              DWORD{ERROR_ACCESS_DENIED})
        << "the right";
    EXPECT_EQ(mark_with(look_at(in(space, L"readonly"), DELETE), at_once),
              DWORD{ERROR_ACCESS_DENIED})
        << "read-only";
    EXPECT_EQ(mark_with(look_at(in(space, L"dir"), DELETE), at_once), DWORD{ERROR_DIR_NOT_EMPTY});
    EXPECT_EQ(mark_with(look_at(in(space, L"readonly"), DELETE), anyway), success);
    EXPECT_FALSE(space.exists(space.path(u"readonly")));
}

// The name is free as soon as the handle that marked it is closed. Wine 10, which knows the flags,
// shows the file until then.
TEST(MarkedHandles, FreeTheNameAtOnceIfAsked)
{
    NEEDS(knows_disposition_flags(), "this Wine knows no flags of deletion");
    workspace space;
    fill(space);
    std::wstring const name = in(space, L"file");
    handle const reader = open(name);
    handle marked = look_at(name, DELETE);
    EXPECT_EQ(
        mark_with(marked, FILE_DISPOSITION_FLAG_DELETE | FILE_DISPOSITION_FLAG_POSIX_SEMANTICS),
        success);
    EXPECT_EQ(get_file_attributes(name), expected(ERROR_ACCESS_DENIED, success));
    marked.close();
    EXPECT_EQ(get_file_attributes(name), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(code_of_open(name, anew), success);
}

constexpr manner deletes_on_close = {.access = GENERIC_READ | DELETE,
                                     .flags =
                                         FILE_FLAG_DELETE_ON_CLOSE | FILE_FLAG_BACKUP_SEMANTICS};

TEST(DeletingOnClose, ShowsTheFileUntilThen)
{
    workspace space;
    fill(space);
    std::wstring const name = in(space, L"file");
    handle doomed = open(name, deletes_on_close);
    ASSERT_TRUE(doomed);
    EXPECT_EQ(get_file_attributes(name), success);
    EXPECT_EQ(code_of_open(name, {.share = FILE_SHARE_READ}), DWORD{ERROR_SHARING_VIOLATION});
    handle other = open(name);
    EXPECT_TRUE(other);
    doomed.close();
    EXPECT_EQ(code_of_open(name), expected(ERROR_ACCESS_DENIED, success)) << "pending now";
    other.close();
    EXPECT_EQ(code_of_open(name), DWORD{ERROR_FILE_NOT_FOUND});
}

TEST(DeletingOnClose, TakesNewFilesAndEmptyDirectories)
{
    workspace space;
    fill(space);
    manner anew = deletes_on_close;
    anew.disposition = CREATE_NEW;
    EXPECT_EQ(code_of_open(in(space, L"new"), anew), success);
    EXPECT_FALSE(space.exists(space.path(u"new")));
    EXPECT_EQ(code_of_open(in(space, LR"(dir\inner)"), deletes_on_close), success);
    EXPECT_FALSE(space.exists(space.path(u"dir\\inner")));
    EXPECT_EQ(code_of_open(in(space, L"readonly"), deletes_on_close), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_TRUE(space.exists(space.path(u"readonly")));
}

TEST(DeletingOnClose, LeavesADirectoryThatIsNotEmpty)
{
    workspace space;
    fill(space);
    EXPECT_EQ(code_of_open(in(space, L"dir"), deletes_on_close), success) << "quietly";
    EXPECT_TRUE(space.is_directory(space.path(u"dir\\inner")));
}

TEST(RemovingOpenDirectories, WaitsForTheLastHandle)
{
    workspace space;
    space.make_directory(space.path(u"dir\\inner"));
    std::wstring const name = in(space, LR"(dir\inner)");
    handle lister = look_at(name, FILE_LIST_DIRECTORY);
    EXPECT_EQ(remove_directory(name), success);
    expect_deleted(name, false);
    DWORD const again = frees_names_at_once() ? ERROR_FILE_NOT_FOUND : ERROR_ACCESS_DENIED;
    EXPECT_EQ(remove_directory(name), expected(again, success));
    lister.close();
    EXPECT_EQ(get_file_attributes(name), DWORD{ERROR_FILE_NOT_FOUND});
}

TEST(RemovingOpenDirectories, TakesNoNewEntries)
{
    workspace space;
    space.make_directory(space.path(u"dir"));
    handle const lister = look_at(in(space, L"dir"), FILE_LIST_DIRECTORY);
    EXPECT_EQ(remove_directory(in(space, L"dir")), success);
    DWORD const code = frees_names_at_once() ? ERROR_PATH_NOT_FOUND : ERROR_ACCESS_DENIED;
    EXPECT_EQ(create_directory(in(space, LR"(dir\new)")), expected(code, success));
    EXPECT_EQ(code_of_open(in(space, LR"(dir\file)"), {.disposition = CREATE_NEW}),
              expected(code, success));
}

TEST(RemovingOpenDirectories, WantsOthersToShareThat)
{
    workspace space;
    space.make_directory(space.path(u"dir"));
    std::wstring const name = in(space, L"dir");
    manner how = {.access = FILE_LIST_DIRECTORY,
                  .share = FILE_SHARE_READ | FILE_SHARE_WRITE,
                  .flags = FILE_FLAG_BACKUP_SEMANTICS};
    handle lister = open(name, how);
    EXPECT_EQ(remove_directory(name), DWORD{ERROR_SHARING_VIOLATION});
    how.access = FILE_READ_ATTRIBUTES;
    lister = open(name, how);
    EXPECT_EQ(remove_directory(name), success) << "who looks only is in nobody's way";
}

// Wine removes it.
TEST(RemovingDirectories, LeavesAReadOnlyOne)
{
    workspace space;
    space.make_directory(space.path(u"dir"));
    set_attributes(in(space, L"dir"), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(remove_directory(in(space, L"dir")), expected(ERROR_ACCESS_DENIED, success));
}

} // namespace

} // namespace contract
