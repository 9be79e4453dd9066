// What only the simulated machine can show of reading links by the standard facility.

#include "standard/filesystem.hpp"

#include "links/reparse_bytes.hpp"
#include "standard/error_codes.hpp"
#include "support/allocations.hpp"
#include "support/calls.hpp"

namespace fl::filesystem::detail {
namespace {

using namespace test_support;

TEST_ON_MACHINE(StandardReadSymlink, ClearsTheCodeAndLeavesTheTextAsItStands)
{
    machine.add_junction(u"C:\\link", uR"(\??\C:/x//)", u"");
    std::error_code ec = stale;
    EXPECT_EQ(standard::read_symlink(L"C:\\link", ec), LR"(\??\C:/x//)");
    EXPECT_EQ(ec, std::error_code());
}

TEST_ON_MACHINE(StandardReadSymlink, Codes)
{
    machine.add_file(u"C:\\file").add_deduplicated_file(u"C:\\dedup");
    struct
    {
        wchar_t const *text;
        int code;
    } const cases[] = {
        {L"C:\\file", 4390}, {L"C:\\no", 2}, {L"C:\\no\\x", 3}, {L"", 3}, {L"C:\\dedup", 4393}};
    for (auto const &row : cases) {
        std::error_code ec = stale;
        EXPECT_EQ(standard::read_symlink(row.text, ec), L"");
        EXPECT_EQ(ec, system_code(row.code));
    }
}

TEST_ON_MACHINE(StandardReadSymlink, GivesTheSystemItsWholeBuffer)
{
    constexpr std::size_t most = 16384; // that a disk keeps, tag and length included
    machine.add_reparse_point(u"C:\\a", dedup_tag, std::string(most - 8, 'x'));
    std::error_code ec;
    standard::read_symlink(L"C:\\a", ec);
    EXPECT_EQ(ec, system_code(4393));
    EXPECT_EQ(machine.journal().at(1).function, "DeviceIoControl");
    EXPECT_EQ(machine.journal().at(1).room, 16386U);
}

TEST_ON_MACHINE(StandardReadSymlink, WithoutMemoryForTheDataIsCode8)
{
    machine.add_symbolic_link(u"C:\\link", u"x");
    std::error_code ec = stale;
    failing_size const shortage(16386);
    EXPECT_EQ(standard::read_symlink(L"C:\\link", ec), L"");
    EXPECT_TRUE(shortage.fired());
    EXPECT_EQ(ec, system_code(8));
    EXPECT_EQ(machine.calls_of("CreateFileW"), 1) << "it is taken once the link is open";
    EXPECT_EQ(machine.calls_of("DeviceIoControl"), 0);
}

// A file system may hold anything: names that lead out of the buffer.
TEST_ON_MACHINE(StandardReadSymlink, NamesEndWithTheBuffer)
{
    std::string body = simulation::symbolic_link_data(u"s", u"p", 0);
    body[6] = body[7] = static_cast<char>(0xFF);
    machine.add_symbolic_link(u"C:\\link", u"x");
    machine.add_reparse_point(u"C:\\link", symlink_tag, body);
    std::error_code ec = stale;
    std::wstring const text = standard::read_symlink(L"C:\\link", ec);
    EXPECT_EQ(ec, std::error_code());
    EXPECT_EQ(text.size(), (16386U - 20U) / 2U);
    EXPECT_EQ(text.substr(0, 3), (std::wstring{L'p', L's', L'\0'})) << "zeros behind the data";
}

} // namespace
} // namespace fl::filesystem::detail
