#include <fl/filesystem/exceptions.hpp>
#include <fl/filesystem/utf8.hpp>

#include "failure/throw.hpp"

#include <iomanip>
#include <locale>
#include <sstream>

namespace fl::filesystem {

// The layout is shared with code outside the library: a change here breaks callers
// that were compiled before it.
static_assert(sizeof(InvalidArgument) == sizeof(FsysExceptionBase) + 2 * sizeof(std::string));
static_assert(sizeof(AccessDenied) == sizeof(FsysExceptionBase));
static_assert(sizeof(SystemError) == sizeof(FsysExceptionBase));
static_assert(sizeof(unsigned int) == 4 && sizeof(fsys_excp_id) == 4);

FsysExceptionBase::FsysExceptionBase(char const *identifier_text, fsys_excp_id id,
                                     std::u16string const &path,
                                     std::vector<std::u16string> const &additional_paths,
                                     unsigned int code)
    : identifier(identifier_text), excp_id(id), path_name(path),
      additional_path_names(additional_paths), error_code(code)
{
}

FsysExceptionBase::FsysExceptionBase(FsysExceptionBase const &) = default;
FsysExceptionBase &FsysExceptionBase::operator=(FsysExceptionBase const &) = default;
FsysExceptionBase::~FsysExceptionBase() = default;

char const *FsysExceptionBase::what() const noexcept
{
    return identifier.c_str();
}

std::u16string FsysExceptionBase::get_path_name() const
{
    return path_name;
}

std::vector<std::u16string> FsysExceptionBase::get_additional_path_names() const
{
    return additional_path_names;
}

unsigned int FsysExceptionBase::get_error_code() const
{
    return error_code;
}

fsys_excp_id FsysExceptionBase::get_excp_id() const
{
    return excp_id;
}

InvalidArgument::InvalidArgument(std::string const &message_text, std::u16string const &path,
                                 std::vector<std::u16string> const &additional_paths)
    : FsysExceptionBase("fl:filesystem:InvalidArgument", fsys_excp_invalid_argument, path,
                        additional_paths, 0),
      message(message_text)
{
}

InvalidArgument::InvalidArgument(InvalidArgument const &) = default;
InvalidArgument &InvalidArgument::operator=(InvalidArgument const &) = default;
InvalidArgument::~InvalidArgument() = default;

char const *InvalidArgument::what() const noexcept
{
    what_text = FsysExceptionBase::what();
    if (!message.empty())
        what_text += ": " + message;
    std::u16string const path = get_path_name();
    if (!path.empty())
        what_text += ": {" + printHelper(path) + "}";
    return what_text.c_str();
}

// A member that is exported: NOLINTNEXTLINE(readability-convert-member-functions-to-static)
std::string InvalidArgument::printHelper(std::u16string const &text) const
{
    std::ostringstream printed;
    printed.imbue(std::locale::classic()); // no digit grouping, whatever the program's locale
    printed << std::uppercase << std::hex << std::setfill('0');
    for (char16_t const unit : text) {
        if (unit >= 32 && unit <= 127)
            printed << static_cast<char>(unit);
        else
            printed << "\\u" << std::setw(4) << static_cast<unsigned int>(unit);
    }
    return printed.str();
}

InvalidOperation::InvalidOperation()
    : FsysExceptionBase("fl:filesystem:InvalidOperation", fsys_excp_invalid_operation, {}, {}, 0)
{
}

FileNameTooLarge::FileNameTooLarge(std::u16string const &path)
    : FsysExceptionBase("fl:filesystem:FileNameTooLarge", fsys_excp_file_name_too_large, path, {},
                        0)
{
}

FileNameConversionFailure::FileNameConversionFailure()
    : FsysExceptionBase("fl:filesystem:FileNameConversionFailure",
                        fsys_excp_file_name_conversion_failure, {}, {}, 0)
{
}

CvtInvalidCharacter::CvtInvalidCharacter()
    : FsysExceptionBase("fl:filesystem:CvtInvalidCharacter", fsys_excp_cvt_invalid_character, {},
                        {}, 0)
{
}

AccessDenied::AccessDenied(std::u16string const &path)
    : FsysExceptionBase("fl:filesystem:AccessDenied", fsys_excp_access_denied, path, {}, 0)
{
}

PathNotFound::PathNotFound(std::u16string const &path)
    : FsysExceptionBase("fl:filesystem:PathNotFound", fsys_excp_path_not_found, path, {}, 0)
{
}

NotDirectoryError::NotDirectoryError(std::u16string const &path)
    : FsysExceptionBase("fl:filesystem:NotDirectoryError", fsys_excp_not_directory_error, path, {},
                        0)
{
}

DirectoryNotEmpty::DirectoryNotEmpty(std::u16string const &path)
    : FsysExceptionBase("fl:filesystem:DirectoryNotEmpty", fsys_excp_directory_not_empty, path, {},
                        0)
{
}

FileIsDirectory::FileIsDirectory(std::u16string const &path)
    : FsysExceptionBase("fl:filesystem:FileIsDirectory", fsys_excp_file_is_directory, path, {}, 0)
{
}

FileExistsError::FileExistsError(std::u16string const &path)
    : FsysExceptionBase("fl:filesystem:FileExistsError", fsys_excp_file_exists_error, path, {}, 0)
{
}

PathNameComparisonFailure::PathNameComparisonFailure()
    : FsysExceptionBase("fl:filesystem:PathNameComparisonFailure",
                        fsys_excp_path_name_comparison_failure, {}, {}, 0)
{
}

SystemError::SystemError(unsigned int code, std::u16string const &path,
                         std::vector<std::u16string> const &additional_paths)
    : FsysExceptionBase("fl:filesystem:SystemError", fsys_excp_system_error, path, additional_paths,
                        code)
{
}

TempEnvNotSpecified::TempEnvNotSpecified()
    : FsysExceptionBase("fl:filesystem:TempEnvNotSpecified", fsys_excp_temp_env_not_specified, {},
                        {}, 0)
{
}

// Defined here and not in the header, so that each class has one copy constructor,
// assignment and destructor in a process, which the library exports.
#define FL_FILESYSTEM_COPIED_LIKE_ITS_BASE(Class)                                                  \
    Class::Class(Class const &) = default;                                                         \
    Class &Class::operator=(Class const &) = default;                                              \
    Class::~Class() = default;

FL_FILESYSTEM_COPIED_LIKE_ITS_BASE(InvalidOperation)
FL_FILESYSTEM_COPIED_LIKE_ITS_BASE(FileNameTooLarge)
FL_FILESYSTEM_COPIED_LIKE_ITS_BASE(FileNameConversionFailure)
FL_FILESYSTEM_COPIED_LIKE_ITS_BASE(CvtInvalidCharacter)
FL_FILESYSTEM_COPIED_LIKE_ITS_BASE(AccessDenied)
FL_FILESYSTEM_COPIED_LIKE_ITS_BASE(PathNotFound)
FL_FILESYSTEM_COPIED_LIKE_ITS_BASE(NotDirectoryError)
FL_FILESYSTEM_COPIED_LIKE_ITS_BASE(DirectoryNotEmpty)
FL_FILESYSTEM_COPIED_LIKE_ITS_BASE(FileIsDirectory)
FL_FILESYSTEM_COPIED_LIKE_ITS_BASE(FileExistsError)
FL_FILESYSTEM_COPIED_LIKE_ITS_BASE(PathNameComparisonFailure)
FL_FILESYSTEM_COPIED_LIKE_ITS_BASE(SystemError)
FL_FILESYSTEM_COPIED_LIKE_ITS_BASE(TempEnvNotSpecified)

#undef FL_FILESYSTEM_COPIED_LIKE_ITS_BASE

// Constructors of their own and not defaults of arguments: those would be explicit, too, and
// then `return {};` isn't allowed.
FileNameTooLarge::FileNameTooLarge() : FileNameTooLarge(std::u16string()) {}
AccessDenied::AccessDenied() : AccessDenied(std::u16string()) {}
PathNotFound::PathNotFound() : PathNotFound(std::u16string()) {}
NotDirectoryError::NotDirectoryError() : NotDirectoryError(std::u16string()) {}
DirectoryNotEmpty::DirectoryNotEmpty() : DirectoryNotEmpty(std::u16string()) {}
FileIsDirectory::FileIsDirectory() : FileIsDirectory(std::u16string()) {}
FileExistsError::FileExistsError() : FileExistsError(std::u16string()) {}
SystemError::SystemError() : SystemError(0) {}

namespace detail {

void throw_invalid_operation_exception()
{
    throw_exception(InvalidOperation());
}

void throw_file_name_conversion_failure()
{
    throw_exception(FileNameConversionFailure());
}

} // namespace detail

} // namespace fl::filesystem

namespace foundation::ustring {

CtypeExceptionBase::CtypeExceptionBase(char const *message_text, unsigned int main_code,
                                       unsigned int sub_code)
    : message(message_text), code(main_code), subcode(sub_code)
{
}

CtypeExceptionBase::CtypeExceptionBase(CtypeExceptionBase const &) = default;
CtypeExceptionBase &CtypeExceptionBase::operator=(CtypeExceptionBase const &) = default;
CtypeExceptionBase::~CtypeExceptionBase() = default;

char const *CtypeExceptionBase::what() const noexcept
{
    return message.c_str();
}

CtypeInvalidCharacter::CtypeInvalidCharacter()
    : CtypeExceptionBase("Invalid character error.", 3, 0)
{
}

CtypeInvalidCharacter::CtypeInvalidCharacter(CtypeInvalidCharacter const &) = default;
CtypeInvalidCharacter &CtypeInvalidCharacter::operator=(CtypeInvalidCharacter const &) = default;
CtypeInvalidCharacter::~CtypeInvalidCharacter() = default;

} // namespace foundation::ustring
