// What Explorer and installers read out of the DLL and the companion.

#include <fl/filesystem/config.hpp>

#include "support/names.hpp"

#include <windows.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace fl::filesystem::tests {
namespace {

class version_resource
{
public:
    explicit version_resource(std::wstring const &file)
    {
        data_.resize(::GetFileVersionInfoSizeW(file.c_str(), nullptr));
        if (!data_.empty() &&
            !::GetFileVersionInfoW(file.c_str(), 0, static_cast<DWORD>(data_.size()), data_.data()))
            data_.clear();
    }

    VS_FIXEDFILEINFO const *numbers() const
    {
        return static_cast<VS_FIXEDFILEINFO const *>(found(L"\\"));
    }

    std::wstring text(std::wstring const &name) const
    {
        void const *const value = found(L"\\StringFileInfo\\040904B0\\" + name);
        return value == nullptr ? L"none" : static_cast<wchar_t const *>(value);
    }

private:
    void const *found(std::wstring const &name) const
    {
        void *value = nullptr;
        UINT size = 0;
        if (data_.empty() || !::VerQueryValueW(data_.data(), name.c_str(), &value, &size))
            return nullptr;
        return value;
    }

    std::vector<std::byte> data_;
};

std::wstring file_of(HMODULE module)
{
    wchar_t buffer[2000] = {};
    ::GetModuleFileNameW(module, buffer, 2000);
    return buffer;
}

constexpr WORD major = FL_FILESYSTEM_VERSION_MAJOR;
constexpr WORD minor = FL_FILESYSTEM_VERSION_MINOR;
constexpr WORD patch = FL_FILESYSTEM_VERSION_PATCH;

void expect_version(std::wstring const &file, DWORD type, std::wstring const &name)
{
    version_resource const resource(file);
    VS_FIXEDFILEINFO const *const numbers = resource.numbers();
    ASSERT_NE(numbers, nullptr);
    EXPECT_EQ(numbers->dwFileVersionMS, DWORD{MAKELONG(minor, major)});
    EXPECT_EQ(numbers->dwFileVersionLS, DWORD{MAKELONG(0, patch)});
    EXPECT_EQ(numbers->dwFileType, type);
    std::wstring const version =
        std::to_wstring(major) + L"." + std::to_wstring(minor) + L"." + std::to_wstring(patch);
    EXPECT_EQ(resource.text(L"FileVersion"), version);
    EXPECT_EQ(resource.text(L"ProductVersion"), version);
    EXPECT_EQ(resource.text(L"ProductName"), L"fl::filesystem");
    EXPECT_EQ(resource.text(L"OriginalFilename"), name);
    EXPECT_NE(resource.text(L"FileDescription"), L"none");
}

TEST(VersionResource, OfTheDllTellsNameAndVersion)
{
    HMODULE const dll = ::GetModuleHandleW(L"fl_filesystem.dll");
    ASSERT_NE(dll, nullptr);
    expect_version(file_of(dll), VFT_DLL, L"fl_filesystem.dll");
}

// It stands beside the tests.
TEST(VersionResource, OfTheCompanionTellsNameAndVersion)
{
    std::wstring const program = file_of(nullptr);
    std::wstring const folder = program.substr(0, program.rfind(L'\\') + 1);
    expect_version(folder + L"flfs.exe", VFT_APP, L"flfs.exe");
}

} // namespace
} // namespace fl::filesystem::tests
