#include "flfs/tour/step.hpp"

#include <fl/filesystem/operations.hpp>

#include "flfs/tour/disk.hpp"

namespace flfs::tour {

namespace fs = fl::filesystem;
using std::filesystem::copy_options;

namespace {

void copy_file(copy_options options)
{
    fs::copy_file(u"reports\\may.txt", u"reports\\june.txt", options);
}

} // namespace

chapter copies(place const &)
{
    return {
        "Copying and moving",
        {{"A file is copied.", R"(copy_file(u"reports\\may.txt", u"reports\\june.txt"))",
          [] {
              copy_file(copy_options::none);
              return content_of(u"reports\\june.txt");
          },
          "all well"},
         {"Without leave, nothing is overwritten.",
          R"(copy_file(u"reports\\may.txt", u"reports\\june.txt"))",
          [] {
              copy_file(copy_options::none);
              return std::string("copied");
          },
          R"(FileExistsError naming reports\june.txt)"},
         {"With leave, it is.", R"(copy_file(..., copy_options::overwrite_existing))",
          [] {
              write_file(u"reports\\june.txt", "something else");
              copy_file(copy_options::overwrite_existing);
              return content_of(u"reports\\june.txt");
          },
          "all well"},
         {"A directory is copied with all that is in it.",
          R"(copy(u"reports", u"archive\\2025", copy_options::recursive))",
          [] {
              fs::copy(u"reports", u"archive\\2025", copy_options::recursive);
              return names_in(u"archive\\2025");
          },
          "june.txt, may.txt"},
         {"Or an empty one is made after it.", R"(copy_directory(u"reports", u"archive\\2026"))",
          [] {
              fs::copy_directory(u"reports", u"archive\\2026");
              return names_in(u"archive\\2026");
          },
          "(nothing)"},
         {"A copy is not the same file,",
          R"(equivalent(u"reports\\may.txt", u"reports\\june.txt"))",
          [] { return yes_or_no(fs::equivalent(u"reports\\may.txt", u"reports\\june.txt")); },
          "no"},
         {"but one more name for it is.",
          R"(copy(u"reports\\may.txt", u"again.txt", create_hard_links); equivalent(...))",
          [] {
              fs::copy(u"reports\\may.txt", u"again.txt", copy_options::create_hard_links);
              return yes_or_no(fs::equivalent(u"reports\\may.txt", u"again.txt"));
          },
          "yes"},
         {"A file gets another name.", R"(rename(u"reports\\june.txt", u"reports\\july.txt"))",
          [] {
              fs::rename(u"reports\\june.txt", u"reports\\july.txt");
              return names_in(u"reports");
          },
          "july.txt, may.txt"},
         {"A failure of two pathnames names the one that is to blame.",
          R"(rename(u"reports\\may.txt", u"nowhere\\may.txt"))",
          [] {
              fs::rename(u"reports\\may.txt", u"nowhere\\may.txt");
              return std::string("renamed");
          },
          R"(PathNotFound naming nowhere\may.txt)"}}};
}

} // namespace flfs::tour
