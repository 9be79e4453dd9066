#include "flfs/tour/step.hpp"

#include <fl/filesystem/operations.hpp>

#include "flfs/tour/disk.hpp"

namespace flfs::tour {

namespace fs = fl::filesystem;

namespace {

std::string other_name_of_content()
{
    return std::string(is_there(u"again.txt") ? "there, " : "gone, ") +
           content_of(u"reports\\may.txt");
}

} // namespace

chapter removal()
{
    return {
        "Removing",
        {{"A file is removed, and the other name of its content stays.",
          R"(remove_file(u"again.txt"))", [] { fs::remove_file(u"again.txt"); },
          other_name_of_content, "gone, all well"},
         {"An empty directory is removed.", R"(remove_directory(u"archive\\2026"))",
          [] { fs::remove_directory(u"archive\\2026"); }, names_then_in(u"archive"), "2024, 2025"},
         {"One with something in it is not.", R"(remove(u"reports"))",
          [] { fs::remove(u"reports"); }, "DirectoryNotEmpty naming reports"},
         {"A shortcut is removed, and never what it leads to.", R"(remove(u"to 2024.lnk"))",
          [] { fs::remove(u"to 2024.lnk"); }, names_then_in(u"."), "archive, long, reports"},
         {"A directory goes with all 30 levels below it.", R"(remove_all(u"long"))",
          [] { fs::remove_all(u"long"); }, names_then_in(u"."), "archive, reports"},
         {"To remove what isn't there is a failure,", R"(remove(u"long"))",
          [] { fs::remove(u"long"); }, "PathNotFound naming long"},
         {"but the empty pathname is passed over.", R"(remove_all(u""))",
          [] { fs::remove_all(u""); }, names_then_in(u"."), "archive, reports"}}};
}

} // namespace flfs::tour
