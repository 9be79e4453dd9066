#include "platform/shell_link.hpp"
#include "platform/shortcut_files.hpp"

namespace contract {

namespace {

TEST(ShellLink, CountsReferencesForTheWholeObject)
{
    apartment const here;
    IShellLinkW *link = nullptr;
    ASSERT_EQ(create_link(reinterpret_cast<void **>(&link)), yes);
    IPersistFile *file = nullptr;
    ASSERT_EQ(code_of(link->QueryInterface(IID_IPersistFile, reinterpret_cast<void **>(&file))),
              yes);
    EXPECT_EQ(link->AddRef(), 3U);
    EXPECT_EQ(file->Release(), 2U);
    EXPECT_EQ(file->Release(), 1U);
    EXPECT_EQ(link->Release(), 0U);
}

TEST(ShellLink, IsOneObject)
{
    apartment const here;
    shortcut const made;
    IUnknown *one = nullptr;
    IUnknown *other = nullptr;
    IShellLinkW *link = nullptr;
    made.link()->QueryInterface(IID_IUnknown, reinterpret_cast<void **>(&one));
    made.file()->QueryInterface(IID_IUnknown, reinterpret_cast<void **>(&other));
    made.file()->QueryInterface(IID_IShellLinkW, reinterpret_cast<void **>(&link));
    EXPECT_EQ(one, other);
    EXPECT_EQ(link, made.link());
    one->Release();
    other->Release();
    link->Release();
    void *none = &none;
    EXPECT_EQ(code_of(made.file()->QueryInterface(unknown_id, &none)), 0x80004002U);
    EXPECT_EQ(none, nullptr);
}

TEST(ShellLink, TellsItsClass)
{
    apartment const here;
    shortcut const made;
    CLSID id = unknown_id;
    EXPECT_EQ(code_of(made.file()->GetClassID(&id)), yes);
    EXPECT_TRUE(id == CLSID_ShellLink);
}

TEST(ShellLink, HasNoPathAtFirst)
{
    apartment const here;
    shortcut made;
    EXPECT_EQ(made.path(), L"");
    EXPECT_EQ(made.path_code(), no);
    EXPECT_EQ(made.resolve(), yes);
    EXPECT_EQ(code_of(made.file()->IsDirty()), no);
}

constexpr text_row path_cases[] = {
    {LR"(@)", LR"(@)", "a directory"},
    {LR"(@\file)", LR"(@\file)", "a file"},
    {LR"(@\missing)", LR"(@\missing)", "nobody has to be there"},
    {LR"(@/a/../b)", LR"(@\b)", "made full"},
    {L"name", LR"(@\name)", "from the current directory"},
    {LR"(Q:\a)", LR"(Q:\a)", "no such drive"},
    {LR"(\\fl-dead-server\share\x)", LR"(\\fl-dead-server\share\x)", "no such server"},
    {LR"(\\?\C:\fl-missing\x)", LR"(\\?\C:\fl-missing\x)", "a long prefix stays"},
};

// Wine says no about a target that is missing, and takes it all the same.
TEST(ShellLink, TakesAnyPath)
{
    workspace space;
    apartment const here;
    space.make_file(space.path(u"file"));
    space.change_directory(space.root());
    for (text_row const &row : path_cases) {
        std::wstring const text = text_in(space, row.text);
        std::wstring const kept = text_in(space, row.expected);
        shortcut made;
        DWORD const wine = space.exists(units(text)) ? yes : no;
        EXPECT_EQ(made.set_path(text), expected(yes, wine)) << row.why;
        EXPECT_EQ(made.path(), kept) << row.why;
        EXPECT_EQ(made.path_code(), yes) << row.why;
    }
}

TEST(ShellLink, NeedsAText)
{
    apartment const here;
    shortcut made;
    EXPECT_EQ(code_of(made.link()->SetPath(nullptr)), from_win32(ERROR_INVALID_PARAMETER));
    EXPECT_EQ(made.set_path(L""), yes);
    EXPECT_EQ(made.path(), L"");
}

TEST(ShellLink, CutsThePathToTheRoom)
{
    apartment const here;
    shortcut made;
    made.set_path(LR"(C:\fl-missing)");
    EXPECT_EQ(made.path(5), LR"(C:\f)");
    EXPECT_EQ(made.path_code(), yes) << "nothing tells of it";
    EXPECT_EQ(made.path(1), L"");
    EXPECT_EQ(made.path(14), LR"(C:\fl-missing)");
    EXPECT_EQ(made.path(13), LR"(C:\fl-missin)");
    EXPECT_EQ(made.path(0).front(), L'#') << "no room, not even for the NUL";
}

TEST(ShellLink, SavesAndLoads)
{
    workspace space;
    apartment const here;
    for (wchar_t const *const target : {LR"(@\file)", LR"(@)", LR"(C:\fl-missing\x)", LR"(Q:\a)",
                                        LR"(\\fl-dead-server\share\x)", L"C:\\fl-\u00E4\\x"}) {
        shortcut made;
        made.set_path(text_in(space, target));
        ASSERT_EQ(made.save(in(space, L"a.lnk")), yes) << units(target).size();
        shortcut read;
        EXPECT_EQ(read.load(in(space, L"a.lnk")), yes);
        EXPECT_EQ(read.path(), text_in(space, target));
        EXPECT_EQ(read.path_code(), yes);
    }
}

// A saved link without a target is a valid file.
TEST(ShellLink, SavesNothingToo)
{
    workspace space;
    apartment const here;
    shortcut made;
    ASSERT_EQ(made.save(in(space, L"a.lnk")), yes);
    shortcut read;
    read.set_path(LR"(C:\former)");
    EXPECT_EQ(read.load(in(space, L"a.lnk")), yes);
    EXPECT_EQ(read.path(), L"") << "what it had before is gone";
    EXPECT_EQ(read.path_code(), no);
}

TEST(ShellLink, RemembersItsFile)
{
    workspace space;
    apartment const here;
    shortcut made;
    made.set_path(LR"(C:\one)");
    ASSERT_EQ(made.save(in(space, L"a.lnk")), yes);
    made.set_path(LR"(C:\other)");
    ASSERT_EQ(code_of(made.file()->Save(nullptr, TRUE)), yes);
    shortcut read;
    ASSERT_EQ(read.load(in(space, L"a.lnk")), yes);
    EXPECT_EQ(read.path(), LR"(C:\other)");
}

/// A folder in which `file` is a shortcut. Others are text, or have another size of the header or
/// another class in it, or are cut: within the header, and behind it, although it promises more.
void make_shortcuts(workspace &space)
{
    std::string const content = content_of(wine_share_shortcut);
    space.make_directory(space.path(u"dir"));
    space.make_file(space.path(u"file"), content);
    space.make_file(space.path(u"text.lnk"), std::string(200, 'x'));
    space.make_file(space.path(u"empty.lnk"));
    space.make_file(space.path(u"size.lnk"), 'M' + content.substr(1));
    space.make_file(space.path(u"class.lnk"), content.substr(0, 4) + 'x' + content.substr(5));
    space.make_file(space.path(u"cut.lnk"), content.substr(0, 75));
    space.make_file(space.path(u"bare.lnk"), content.substr(0, 76));
    space.change_directory(space.root());
}

TEST(ShellLink, LoadingOutcomes)
{
    auto const load = [](std::wstring const &name) {
        apartment const here;
        shortcut made;
        DWORD const code = made.load(name);
        EXPECT_EQ(made.path(), code == yes ? LR"(\\fl-server\share\x)" : L"") << name;
        return to_win32(code);
    };
    expect_codes(make_shortcuts, load, names_of_file, missing_names, as_it_stands, no_names);
    expect_code(make_shortcuts, load, ERROR_ACCESS_DENIED, {LR"(@\dir)"});
    expect_code(make_shortcuts, load, garbage,
                {L"nul", LR"(@\text.lnk)", LR"(@\empty.lnk)", LR"(@\size.lnk)", LR"(@\class.lnk)",
                 LR"(@\cut.lnk)", LR"(@\bare.lnk)"});
}

TEST(ShellLink, SavingOutcomes)
{
    auto const save = [](std::wstring const &name) {
        apartment const here;
        shortcut made;
        made.set_path(LR"(C:\new-target)");
        DWORD const code = made.save(name);
        if (code == yes) {
            shortcut read;
            EXPECT_EQ(read.load(name), yes) << name;
            EXPECT_EQ(read.path(), LR"(C:\new-target)") << name;
        }
        return to_win32(code);
    };
    expect_codes(make_shortcuts, save, names_of_file, new_names, impossible_names, no_names);
    expect_code(make_shortcuts, save, yes, {LR"(@\text.lnk)"});
    expect_code(make_shortcuts, save, ERROR_ACCESS_DENIED, {LR"(@\dir)"});
}

// Wine reads the narrow form of a pathname only.
TEST(ShellLink, ReadsFilesFromElsewhere)
{
    workspace space;
    apartment const here;
    space.make_file(space.path(u"drive.lnk"), content_of(wine_drive_shortcut));
    space.make_file(space.path(u"unicode.lnk"), content_of(unicode_shortcut));
    shortcut made;
    EXPECT_EQ(made.load(in(space, L"drive.lnk")), yes);
    EXPECT_EQ(made.path(), LR"(C:\nodir\missing)");
    EXPECT_EQ(made.load(in(space, L"unicode.lnk")), yes);
    EXPECT_EQ(made.path(), runs_under_wine() ? L"C:\\nodir\\?" : L"C:\\nodir\\\u0436");
}

TEST(ShellLink, ResolvesWhatIsThere)
{
    workspace space;
    apartment const here;
    space.make_file(space.path(u"file"));
    shortcut made;
    made.set_path(in(space, L"file"));
    EXPECT_EQ(made.resolve(), yes);
    EXPECT_EQ(made.path(), in(space, L"file"));
}

// Wine never looks for the target.
TEST(ShellLink, ResolvesNoMissingTarget)
{
    workspace space;
    apartment const here;
    shortcut made;
    made.set_path(in(space, L"missing"));
    EXPECT_EQ(made.resolve(), expected(from_win32(ERROR_FILE_NOT_FOUND), yes));
    EXPECT_EQ(made.path(), in(space, L"missing")) << "it stays what it was";
}

} // namespace

} // namespace contract
