#include "standard/identity.hpp"

#include "support/calls.hpp"

#include <string>

namespace fl::filesystem::detail {
namespace {

using namespace test_support;

// FAT and many shares have identifiers of 64 bits: its bytes, the lowest first, and zeros.
TEST_ON_MACHINE(StandardIdentity, AShortIdentifierIsTheBeginningOfALongOne)
{
    machine.keep_journal(false);
    sure_fault const fault =
        machine.fail_every_call_on("GetFileInformationByHandleEx", ERROR_INVALID_PARAMETER);
    bool has_second_byte = false;
    for (int nth = 0; nth < 300; ++nth) {
        std::string const digits = std::to_string(nth);
        std::u16string const name = u"C:\\" + std::u16string(digits.begin(), digits.end());
        machine.add_file(name);
        BY_HANDLE_FILE_INFORMATION info = {};
        HANDLE const file = ::CreateFileW(wide(name).c_str(), FILE_READ_ATTRIBUTES, 0, nullptr,
                                          OPEN_EXISTING, 0, nullptr);
        ASSERT_TRUE(::GetFileInformationByHandle(file, &info));
        ::CloseHandle(file);
        std::uint64_t left = std::uint64_t{info.nFileIndexHigh} << 32 | info.nFileIndexLow;
        has_second_byte = has_second_byte || (left >> 8 & 0xFF) != 0;

        standard::file_identity identity;
        std::error_code ec;
        ASSERT_TRUE(standard::read_identity(wide(name), identity, ec));
        EXPECT_EQ(identity.volume, info.dwVolumeSerialNumber);
        for (BYTE const byte : identity.file.Identifier) {
            EXPECT_EQ(byte, left & 0xFF) << nth;
            left >>= 8;
        }
    }
    EXPECT_TRUE(has_second_byte) << "files enough";
}

} // namespace
} // namespace fl::filesystem::detail
