// Input that nobody means well with: names that no disk has, reparse data of every length with
// every offset, shortcuts cut at every byte.

#include "reliability/subjects.hpp"

#include "platform/shortcut_files.hpp"

#include <algorithm>
#include <iostream>
#include <memory>

namespace reliability {

namespace {

using namespace test_support;

std::vector<text> hostile_names()
{
    std::vector<text> all;
    for (char16_t unit = 0; unit < 32; ++unit)
        all.push_back(text(u"C:\\d\\a") + unit + u"b");
    for (char16_t const unit : {u'\x7F', u'\x85', u'\x9B', u'\x200B', u'\x202E', u'\x2066',
                                u'\xFEFF', u'\xFFFE', u'\xFFFF', u'\xD800', u'\xDFFF'})
        all.push_back(text(u"C:\\d\\a") + unit + u"b");
    for (char16_t const unit : text(u"<>\"|?*:"))
        all.push_back(text(u"C:\\d\\a") + unit + u"b");
    for (char16_t const unit : text(u"\\/. "))
        all.push_back(text(32767, unit));
    all.push_back(text(u"C:") + text(32765, u'\\'));
    all.push_back(text(u"\\\\?\\") + text(32763, u'\\'));
    all.push_back(text(u"\\\\?\\UNC\\") + text(300, u'\\'));
    for (char16_t const *odd : {u"",
                                u"\\",
                                u"\\\\",
                                u"\\\\?",
                                u"\\\\?\\",
                                u"\\\\.\\",
                                u"\\\\?\\UNC",
                                u"\\\\?\\C:",
                                u"C:",
                                u"C",
                                u":",
                                u"::$DATA",
                                u"C:\\d\\a:stream",
                                u"\\\\server",
                                u"\\\\server\\",
                                u"nul",
                                u"con",
                                u"\\\\.\\pipe\\x",
                                u"\\\\?\\GLOBALROOT\\Device",
                                u"..\\..\\..",
                                u"C:\\..\\..",
                                u"\\??\\C:\\d",
                                u"\\\\?\\\x4E00NC\\a\\b\\c"})
        all.push_back(odd);
    return all;
}

TEST(Hostile, NamesMeetTheLibrarysFailuresAndTouchNothingElse)
{
    long tried_names = 0;
    for (operation const &tried : operations()) {
        if (std::string(tried.name).starts_with("get_"))
            continue;
        for (text const &name : hostile_names()) {
            simulated_machine machine;
            machine.keep_journal(false);
            build_disk(machine);
            ++tried_names;
            try {
                tried.run(name + tried.below);
            } catch (ff::FsysExceptionBase const &) {
            } catch (foundation::ustring::CtypeExceptionBase const &) {
            } catch (std::filesystem::filesystem_error const &) {
            }
            std::string const where =
                std::string(tried.name) + " of " + printable(name.substr(0, 40));
            expect_nothing_open(machine, where);
            // some of them mean the root, and then all below it goes where that was asked for
            if (!std::string(tried.name).starts_with("remove_all")) {
                EXPECT_TRUE(machine.exists(uR"(C:\away\kept)")) << where;
            }
            EXPECT_EQ(machine.content(uR"(D:\m)"), "mounted") << where;
            if (HasFailure())
                return;
        }
    }
    std::cout << "hostile: " << tried_names << " names under operations\n";
}

void put(ff::detail::windows::reparse_data_context &data, std::size_t at, unsigned int number)
{
    data.buffer[at] = static_cast<unsigned char>(number);
    data.buffer[at + 1] = static_cast<unsigned char>(number >> 8U);
}

TEST(Hostile, ReparseDataOfEveryLengthWithEveryOffsetStaysInside)
{
    using namespace ff::detail::windows;
    auto const data = std::make_unique<reparse_data_context>();
    std::vector<unsigned int> numbers;
    for (unsigned int number = 0; number < 48; ++number)
        numbers.push_back(number);
    for (unsigned int const limit : {16363U, 16384U, 16392U, 32767U, 65534U, 65535U}) {
        for (unsigned int near = limit - 2; near <= std::min(limit + 2, 65535U); ++near)
            numbers.push_back(near);
    }
    long cases = 0;
    for (bool const is_link : {true, false}) {
        for (unsigned int const offset : numbers) {
            for (unsigned int const length : numbers) {
                std::fill(std::begin(data->buffer), std::end(data->buffer),
                          static_cast<unsigned char>('x'));
                put(*data, 0, is_link ? 0x000C : 0x0003);
                put(*data, 2, 0xA000);
                put(*data, 4, length);
                for (std::size_t const field : {8U, 12U}) {
                    put(*data, field, offset);
                    put(*data, field + 2, length);
                }
                attrib_link_type type = link_type_none;
                try {
                    std::wstring const target = get_target_path_bridge(type, *data);
                    ASSERT_LE(target.size(), sizeof data->buffer / 2);
                } catch (foundation::ustring::CtypeExceptionBase const &) {
                }
                ++cases;
            }
        }
    }
    std::cout << "hostile: " << cases << " offsets and lengths in reparse data\n";
}

TEST(Hostile, ShortcutsCutAtEveryByteHaveATargetOrAFailure)
{
    std::string const whole[] = {contract::content_of(contract::wine_drive_shortcut),
                                 contract::content_of(contract::wine_share_shortcut),
                                 contract::content_of(contract::unicode_shortcut)};
    for (std::string const &content : whole) {
        for (std::size_t size = 0; size <= content.size(); ++size) {
            simulated_machine machine;
            machine.add_file(uR"(C:\s.lnk)", content.substr(0, size));
            failure_of([] { static_cast<void>(ff::read_shortcut(text(uR"(C:\s.lnk)"))); });
            failure_of([] { ff::canonical(text(uR"(C:\s.lnk\x)")); });
            expect_nothing_open(machine, std::to_string(size));
        }
    }
}

} // namespace
} // namespace reliability
