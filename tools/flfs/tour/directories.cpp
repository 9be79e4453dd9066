#include "flfs/tour/step.hpp"

#include <fl/filesystem/operations.hpp>

#include "flfs/tour/disk.hpp"

namespace flfs::tour {

namespace fs = fl::filesystem;

namespace {

constexpr std::size_t levels = 30;
constexpr std::size_t name_length = 40;

/// Relative, and longer than any Windows program of old could take.
std::u16string deep_directory()
{
    std::u16string pathname = u"long";
    for (std::size_t level = 0; level < levels; ++level) {
        pathname += u'\\';
        pathname.append(name_length, static_cast<char16_t>(u'a' + level % 26));
    }
    return pathname;
}

std::string length_of_deep_directory()
{
    return fs::exists(deep_directory())
               ? std::to_string(fs::absolute(deep_directory()).size()) + " units"
               : "not there";
}

} // namespace

chapter directories(place const &where)
{
    std::size_t const deep_length = where.folder.size() + 1 + deep_directory().size();
    return {"Directories",
            {{"A directory is made.", R"(create_directory(u"reports"))",
              [] { fs::create_directory(u"reports"); }, names_then_in(u"."), "reports"},
             {"To make it once more is a failure, which names it as the caller wrote it.",
              R"(create_directory(u"reports"))", [] { fs::create_directory(u"reports"); },
              "FileExistsError naming reports"},
             {"A directory is made with all that are missing above it.",
              R"(create_directories(u"archive/2024/may"))",
              [] { fs::create_directories(u"archive/2024/may"); }, names_then_in(u"archive\\2024"),
              "may"},
             {"So is one 30 levels down. The library adds the long prefix by itself.",
              R"(create_directories(u"long\\aaaaaa...\\bbbbbb...\\..."))",
              [] { fs::create_directories(deep_directory()); }, length_of_deep_directory,
              std::to_string(deep_length) + " units"}}};
}

} // namespace flfs::tour
