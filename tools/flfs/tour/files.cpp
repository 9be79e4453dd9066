#include "flfs/tour/step.hpp"

#include <fl/filesystem/operations.hpp>

#include "flfs/status_text.hpp"
#include "flfs/tour/disk.hpp"

namespace flfs::tour {

namespace fs = fl::filesystem;

namespace {

std::u16string const report = u"reports\\may.txt";

std::string facts(fs::file_status const &record)
{
    return std::string(type_description(record)) + ", " + std::to_string(record.get_size()) +
           " bytes, " + permission_letters(record.get_perms());
}

std::string letters()
{
    return permission_letters(fs::status(report).get_perms());
}

std::string ask_in_short()
{
    fs::file_status_light const record = fs::status_express_light(report);
    return std::string(fs::file_status_light::is_regular(record) ? "file, " : "no file, ") +
           std::to_string(record.get_size()) + " bytes";
}

} // namespace

chapter files()
{
    using fs::file_status;
    return {
        "Files, looked at",
        {{"The tour writes a file, and asks for its record.", R"(status(u"reports\\may.txt"))",
          [] { write_file(report, "all well"); }, [] { return facts(fs::status(report)); },
          "file, 8 bytes, rw-rw-rw-"},
         {"For many files there is a cheaper question.",
          R"(status_express_light(u"reports\\may.txt"))", ask_in_short, "file, 8 bytes"},
         {"A missing name is an answer and no failure.", R"(status(u"reports\\june.txt"))",
          [] { return type_description(fs::status(u"reports\\june.txt")); }, "not found"},
         {"It isn't there.", R"(exists(u"reports\\june.txt"))",
          [] { return fs::exists(u"reports\\june.txt"); }, "no"},
         {"The file becomes read-only.",
          R"(permissions(u"reports\\may.txt", perms_remove | owner_write))",
          [] { fs::permissions(report, file_status::perms_remove | file_status::owner_write); },
          letters, "r--r--r--"},
         {"It can be read, but not written.",
          R"(access(u"reports\\may.txt", access_read), ... access_write))",
          [] {
              return std::string(yes_or_no(fs::access(report, fs::access_read))) + ", " +
                     yes_or_no(fs::access(report, fs::access_write));
          },
          "yes, no"},
         {"So its directory can't be removed with all that is in it.", R"(remove_all(u"reports"))",
          [] { fs::remove_all(u"reports"); }, R"(AccessDenied naming <folder>\reports\may.txt)"},
         {"It becomes writable again.",
          R"(permissions(u"reports\\may.txt", perms_add | owner_write))",
          [] { fs::permissions(report, file_status::perms_add | file_status::owner_write); },
          letters, "rw-rw-rw-"},
         {"To ask about no name at all is a failure of the caller.", R"(access(u"", 1))",
          [] { return fs::access(u"", fs::access_exists); }, "InvalidArgument"}}};
}

} // namespace flfs::tour
