#include <simulation/machine.hpp>

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>

namespace fl::simulation {

namespace {

using names = std::vector<std::u16string>;

TEST(Machine, BeginsWithAnEmptyDrive)
{
    simulated_machine machine;
    EXPECT_EQ(machine.entries(u"C:\\"), names());
    EXPECT_EQ(machine.current_directory(), u"C:\\");
    EXPECT_FALSE(machine.exists(u"D:\\"));
}

TEST(Machine, IsThereWithoutAnyBeingMade)
{
    wchar_t buffer[4];
    EXPECT_EQ(::GetCurrentDirectoryW(4, buffer), 3U);
    EXPECT_STREQ(buffer, L"C:\\");
}

TEST(Machine, IsBuilt)
{
    simulated_machine machine;
    machine.add_drive(u'd')
        .add_directory(u"D:\\dir\\inner")
        .add_file(u"D:\\dir\\b.txt", "text")
        .add_file(u"D:\\dir\\A.txt")
        .add_share(u"server", u"share")
        .add_file(u"\\\\server\\share\\new\\file")
        .set_current_directory(u"D:\\dir");

    EXPECT_EQ(machine.entries(u"D:\\dir"), (names{u"A.txt", u"b.txt", u"inner"}));
    EXPECT_TRUE(machine.is_directory(u"D:\\DIR\\Inner")) << "names have no case";
    EXPECT_FALSE(machine.is_file(u"D:\\dir\\inner"));
    EXPECT_TRUE(machine.is_file(u"D:\\dir\\B.TXT"));
    EXPECT_FALSE(machine.is_directory(u"D:\\dir\\b.txt"));
    EXPECT_EQ(machine.content(u"D:\\dir\\b.txt"), "text");
    EXPECT_TRUE(machine.is_directory(u"\\\\SERVER\\Share\\new"));
    EXPECT_FALSE(machine.exists(u"D:\\dir\\missing"));
    EXPECT_FALSE(machine.exists(u"\\\\server\\other\\new"));
    EXPECT_EQ(machine.current_directory(), u"D:\\dir");
}

TEST(Machine, TakesPathnamesAsTheyStand)
{
    simulated_machine machine;
    std::u16string const deep = u"C:" + std::u16string(u"\\") + std::u16string(255, u'd') + u"\\" +
                                std::u16string(255, u'e') + u"\\nul. ";
    machine.add_file(deep);
    EXPECT_TRUE(machine.is_file(deep));
    EXPECT_TRUE(machine.is_file(u"\\\\?\\" + deep));
    EXPECT_FALSE(machine.exists(deep.substr(0, deep.size() - 1)));
}

TEST(Machine, RefusesWhatCannotBeBuilt)
{
    simulated_machine machine;
    machine.add_file(u"C:\\file");
    EXPECT_THROW(machine.add_drive(u'1'), std::invalid_argument);
    EXPECT_THROW(machine.add_file(u"D:\\file"), std::invalid_argument);
    EXPECT_THROW(machine.add_file(u"C:\\file\\inner"), std::invalid_argument);
    EXPECT_THROW(machine.add_directory(u"C:\\file"), std::invalid_argument);
    EXPECT_THROW(machine.add_directory(u"C:\\a*b"), std::invalid_argument);
    EXPECT_THROW(machine.add_directory(u"relative"), std::invalid_argument);
    EXPECT_THROW(machine.add_directory(u"\\\\server\\share\\dir"), std::invalid_argument);
    EXPECT_THROW(machine.entries(u"C:\\file"), std::invalid_argument);
    EXPECT_THROW(machine.set_current_directory(u"C:\\file"), std::invalid_argument);
    EXPECT_THROW(machine.attributes(u"C:\\missing"), std::invalid_argument);
}

TEST(Machine, ReplacesAFile)
{
    simulated_machine machine;
    machine.add_file(u"C:\\File", "old").add_file(u"C:\\FILE", "new");
    EXPECT_EQ(machine.entries(u"C:\\"), names{u"File"});
    EXPECT_EQ(machine.content(u"C:\\file"), "new");
}

TEST(Machine, ForgetsWhatIsRemoved)
{
    simulated_machine machine;
    machine.add_drive(u'D').add_file(u"C:\\dir\\file");
    machine.remove(u"C:\\DIR");
    EXPECT_EQ(machine.entries(u"C:\\"), names());
    machine.remove_drive(u'D');
    EXPECT_FALSE(machine.exists(u"D:\\"));
}

TEST(Machine, KeepsAttributes)
{
    simulated_machine machine;
    machine.add_file(u"C:\\file").add_directory(u"C:\\dir");
    EXPECT_EQ(machine.attributes(u"C:\\file"), DWORD{FILE_ATTRIBUTE_ARCHIVE});
    machine.set_attributes(u"C:\\file", 0);
    EXPECT_EQ(::GetFileAttributesW(L"C:\\file"), DWORD{FILE_ATTRIBUTE_NORMAL});
    machine.set_attributes(u"C:\\dir", FILE_ATTRIBUTE_HIDDEN);
    EXPECT_EQ(::GetFileAttributesW(L"C:\\dir"),
              DWORD{FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_HIDDEN});
}

TEST(Machine, GivesWayToANewerOneAndComesBack)
{
    simulated_machine outer;
    outer.add_directory(u"C:\\outer");
    {
        simulated_machine inner;
        EXPECT_EQ(::GetFileAttributesW(L"C:\\outer"), INVALID_FILE_ATTRIBUTES);
        EXPECT_TRUE(::CreateDirectoryW(L"C:\\inner", nullptr));
        EXPECT_EQ(inner.entries(u"C:\\"), names{u"inner"});
    }
    EXPECT_EQ(::GetFileAttributesW(L"C:\\outer"), DWORD{FILE_ATTRIBUTE_DIRECTORY});
    EXPECT_EQ(outer.entries(u"C:\\"), names{u"outer"});
}

TEST(Machine, MayGoInAnyOrder)
{
    auto first = std::make_unique<simulated_machine>();
    first->add_directory(u"C:\\first");
    simulated_machine second;
    second.add_directory(u"C:\\second");
    first.reset();
    EXPECT_EQ(::GetFileAttributesW(L"C:\\second"), DWORD{FILE_ATTRIBUTE_DIRECTORY});
}

TEST(Machine, ComparesLettersBeyondAscii)
{
    simulated_machine machine;
    struct
    {
        char16_t const *made, *asked;
        bool same;
        char const *why;
    } const rows[] = {
        {u"C:\\\u00E4\u00FE", u"C:\\\u00C4\u00DE", true, "Latin"},
        {u"C:\\\u0101", u"C:\\\u0100", true, "a pair, the upper half even"},
        {u"C:\\\u017E", u"C:\\\u017D", true, "a pair, the upper half odd"},
        {u"C:\\\u00FF", u"C:\\\u0178", true, "far apart"},
        {u"C:\\\u03B1\u03C9", u"C:\\\u0391\u03A9", true, "Greek"},
        {u"C:\\\u0444\u0451", u"C:\\\u0424\u0401", true, "Cyrillic"},
        {u"C:\\\u00DF", u"C:\\SS", false, "one unit never becomes two"},
        {u"C:\\\u00F7", u"C:\\\u00D7", false, "no letters"},
        {u"C:\\\u0131", u"C:\\I", false, "a disk knows no Turkish"},
        {u"C:\\a", u"C:\\b", false, "other letters"},
        {u"C:\\[", u"C:\\{", false, "no letters"},
    };
    for (auto const &row : rows) {
        machine.add_file(row.made);
        EXPECT_EQ(machine.exists(row.asked), row.same) << row.why;
        machine.remove(row.made);
    }
}

} // namespace

} // namespace fl::simulation
