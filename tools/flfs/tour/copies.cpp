#include "flfs/tour/step.hpp"

#include <fl/filesystem/operations.hpp>

#include "flfs/tour/disk.hpp"

namespace flfs::tour {

namespace fs = fl::filesystem;
using std::filesystem::copy_options;

namespace {

void copy_may()
{
    fs::copy_file(u"reports\\may.txt", u"reports\\june.txt", copy_options::none);
}

void copy_may_over_something()
{
    write_file(u"reports\\june.txt", "something else");
    fs::copy_file(u"reports\\may.txt", u"reports\\june.txt", copy_options::overwrite_existing);
}

std::string content_of_june()
{
    return content_of(u"reports\\june.txt");
}

} // namespace

chapter copies()
{
    return {
        "Copying and moving",
        {{"A file is copied.", R"(copy_file(u"reports\\may.txt", u"reports\\june.txt"))", copy_may,
          content_of_june, "all well"},
         {"Without leave, nothing is overwritten.",
          R"(copy_file(u"reports\\may.txt", u"reports\\june.txt"))", copy_may,
          R"(FileExistsError naming reports\june.txt)"},
         {"With leave, it is.", R"(copy_file(..., copy_options::overwrite_existing))",
          copy_may_over_something, content_of_june, "all well"},
         {"A directory is copied with all that is in it.",
          R"(copy(u"reports", u"archive\\2025", copy_options::recursive))",
          [] { fs::copy(u"reports", u"archive\\2025", copy_options::recursive); },
          names_then_in(u"archive\\2025"), "june.txt, may.txt"},
         {"Or an empty one is made after it.", R"(copy_directory(u"reports", u"archive\\2026"))",
          [] { fs::copy_directory(u"reports", u"archive\\2026"); }, names_then_in(u"archive\\2026"),
          "(nothing)"},
         {"A copy is not the same file,",
          R"(equivalent(u"reports\\may.txt", u"reports\\june.txt"))",
          [] { return fs::equivalent(u"reports\\may.txt", u"reports\\june.txt"); }, "no"},
         {"but one more name for it is.",
          R"(copy(u"reports\\may.txt", u"again.txt", create_hard_links); equivalent(...))",
          [] { fs::copy(u"reports\\may.txt", u"again.txt", copy_options::create_hard_links); },
          [] { return fs::equivalent(u"reports\\may.txt", u"again.txt"); }, "yes"},
         {"A file gets another name.", R"(rename(u"reports\\june.txt", u"reports\\july.txt"))",
          [] { fs::rename(u"reports\\june.txt", u"reports\\july.txt"); }, names_then_in(u"reports"),
          "july.txt, may.txt"},
         {"A failure of two pathnames names the one that is to blame.",
          R"(rename(u"reports\\may.txt", u"nowhere\\may.txt"))",
          [] { fs::rename(u"reports\\may.txt", u"nowhere\\may.txt"); },
          R"(PathNotFound naming nowhere\may.txt)"}}};
}

} // namespace flfs::tour
