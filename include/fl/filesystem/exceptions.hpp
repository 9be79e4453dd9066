#ifndef FL_FILESYSTEM_EXCEPTIONS_HPP
#define FL_FILESYSTEM_EXCEPTIONS_HPP
// Public. Everything that the library throws. Which operation throws what, and
// with which pathname, is told at the operation.

#include <fl/filesystem/config.hpp>

#include <exception>
#include <string>
#include <vector>

FL_FILESYSTEM_BEGIN_CLASSES
namespace fl::filesystem {

/// The class of an exception as a number that stays the same for ever, for
/// callers that report failures across a language or process boundary.
enum fsys_excp_id
{
    fsys_excp_invalid_argument = 1,              ///< `InvalidArgument`
    fsys_excp_invalid_operation = 2,             ///< `InvalidOperation`
    fsys_excp_file_name_too_large = 3,           ///< `FileNameTooLarge`
    fsys_excp_file_name_conversion_failure = 4,  ///< `FileNameConversionFailure`
    fsys_excp_cvt_invalid_character = 5,         ///< `CvtInvalidCharacter`
    fsys_excp_access_denied = 6,                 ///< `AccessDenied`
    fsys_excp_path_not_found = 7,                ///< `PathNotFound`
    fsys_excp_not_directory_error = 8,           ///< `NotDirectoryError`
    fsys_excp_directory_not_empty = 9,           ///< `DirectoryNotEmpty`
    fsys_excp_file_is_directory = 10,            ///< `FileIsDirectory`
    fsys_excp_file_exists_error = 11,            ///< `FileExistsError`
    fsys_excp_path_name_comparison_failure = 12, ///< `PathNameComparisonFailure`
    fsys_excp_system_error = 13,                 ///< `SystemError`
    fsys_excp_temp_env_not_specified = 14        ///< `TempEnvNotSpecified`
};

/// The root of the family: catch this to catch every failure of an operation, but for
/// `foundation::ustring::CtypeInvalidCharacter`, below, and what an operation names of the
/// standard library's.
///
/// `what()` is a stable identifier such as "fl:filesystem:AccessDenied", to be
/// mapped to a message of your own; the pathnames and the system's code are to
/// be had from the getters. All are thrown in a form that
/// `boost::current_exception` carries to another thread with every field.
class FL_FILESYSTEM_API FsysExceptionBase : public std::exception
{
public:
    /// Holds the arguments.
    FsysExceptionBase(char const *identifier, fsys_excp_id excp_id, std::u16string const &path,
                      std::vector<std::u16string> const &additional_path_names,
                      unsigned int error_code);
    FsysExceptionBase(FsysExceptionBase const &other);
    FsysExceptionBase &operator=(FsysExceptionBase const &other);
    ~FsysExceptionBase() override;

    /// Returns the identifier alone, valid as long as the object lives and is
    /// not assigned to.
    char const *what() const noexcept override;

    /// Returns the pathname that the failure is about, as it was handed to the
    /// system or to the operation; empty if there is none.
    std::u16string get_path_name() const;

    /// Returns further pathnames. A `SystemError` out of a system code holds
    /// exactly one, empty where the operation had no second pathname.
    std::vector<std::u16string> get_additional_path_names() const;

    /// Returns the code of a `SystemError`, the system's own but where an operation tells one
    /// of its numbers, as `copy` does; 0 for every other class.
    unsigned int get_error_code() const;

    /// Returns the number of the object's class.
    fsys_excp_id get_excp_id() const;

private:
    // The layout is shared with code outside the library: keep the order.
    std::string identifier;
    fsys_excp_id excp_id;
    std::u16string path_name;
    std::vector<std::u16string> additional_path_names;
    unsigned int error_code;
};

/// An argument that no file system could make sense of, or a name that the
/// system refuses. The only class with a message of its own.
class FL_FILESYSTEM_API InvalidArgument : public FsysExceptionBase
{
public:
    /// Holds the arguments. The code is 0.
    InvalidArgument(std::string const &message, std::u16string const &path,
                    std::vector<std::u16string> const &additional_path_names);
    InvalidArgument(InvalidArgument const &other);
    InvalidArgument &operator=(InvalidArgument const &other);
    ~InvalidArgument() override;

    /// Returns identifier, message and pathname: "fl:filesystem:InvalidArgument:
    /// message: {pathname}" in one line. An empty message or pathname is left out
    /// together with its punctuation. A code unit of the pathname outside 32 to 127
    /// stands as a backslash, a `u` and four upper-case hexadecimal digits.
    ///
    /// The text is built anew at each call and is valid until the next one, so
    /// two threads must not ask the same object at once.
    char const *what() const noexcept override;

private:
    std::string printHelper(std::u16string const &text) const;

    mutable std::string what_text;
    std::string message;
};

/// Raised by `detail::throw_invalid_operation_exception` alone.
class FL_FILESYSTEM_API InvalidOperation : public FsysExceptionBase
{
public:
    /// About no pathname.
    InvalidOperation();
    InvalidOperation(InvalidOperation const &other);
    InvalidOperation &operator=(InvalidOperation const &other);
    ~InvalidOperation() override;
};

/// A pathname beyond the 32,767 units that the system takes, or a name beyond
/// what its file system takes (code 206, and then without the pathname).
class FL_FILESYSTEM_API FileNameTooLarge : public FsysExceptionBase
{
public:
    /// About `path`, or about no pathname.
    FileNameTooLarge();
    explicit FileNameTooLarge(std::u16string const &path);
    FileNameTooLarge(FileNameTooLarge const &other);
    FileNameTooLarge &operator=(FileNameTooLarge const &other);
    ~FileNameTooLarge() override;
};

/// A text that should have been UTF-8 (see `from_utf8`) and isn't. No operation raises it.
class FL_FILESYSTEM_API FileNameConversionFailure : public FsysExceptionBase
{
public:
    /// About no pathname.
    FileNameConversionFailure();
    FileNameConversionFailure(FileNameConversionFailure const &other);
    FileNameConversionFailure &operator=(FileNameConversionFailure const &other);
    ~FileNameConversionFailure() override;
};

/// Never raised by the library; for callers that convert pathnames themselves.
class FL_FILESYSTEM_API CvtInvalidCharacter : public FsysExceptionBase
{
public:
    /// About no pathname.
    CvtInvalidCharacter();
    CvtInvalidCharacter(CvtInvalidCharacter const &other);
    CvtInvalidCharacter &operator=(CvtInvalidCharacter const &other);
    ~CvtInvalidCharacter() override;
};

/// Codes 5 and 1920: the caller may not do this to the pathname.
class FL_FILESYSTEM_API AccessDenied : public FsysExceptionBase
{
public:
    /// About `path`, or about no pathname.
    AccessDenied();
    explicit AccessDenied(std::u16string const &path);
    AccessDenied(AccessDenied const &other);
    AccessDenied &operator=(AccessDenied const &other);
    ~AccessDenied() override;
};

/// Codes 2 and 3: the name, or a directory on the way to it, isn't there.
class FL_FILESYSTEM_API PathNotFound : public FsysExceptionBase
{
public:
    /// About `path`, or about no pathname.
    PathNotFound();
    explicit PathNotFound(std::u16string const &path);
    PathNotFound(PathNotFound const &other);
    PathNotFound &operator=(PathNotFound const &other);
    ~PathNotFound() override;
};

/// Code 267: a directory was asked for and the name is something else.
class FL_FILESYSTEM_API NotDirectoryError : public FsysExceptionBase
{
public:
    /// About `path`, or about no pathname.
    NotDirectoryError();
    explicit NotDirectoryError(std::u16string const &path);
    NotDirectoryError(NotDirectoryError const &other);
    NotDirectoryError &operator=(NotDirectoryError const &other);
    ~NotDirectoryError() override;
};

/// Code 145: only empty directories can be removed.
class FL_FILESYSTEM_API DirectoryNotEmpty : public FsysExceptionBase
{
public:
    /// About `path`, or about no pathname.
    DirectoryNotEmpty();
    explicit DirectoryNotEmpty(std::u16string const &path);
    DirectoryNotEmpty(DirectoryNotEmpty const &other);
    DirectoryNotEmpty &operator=(DirectoryNotEmpty const &other);
    ~DirectoryNotEmpty() override;
};

/// A file was asked for and the name is a directory.
class FL_FILESYSTEM_API FileIsDirectory : public FsysExceptionBase
{
public:
    /// About `path`, or about no pathname.
    FileIsDirectory();
    explicit FileIsDirectory(std::u16string const &path);
    FileIsDirectory(FileIsDirectory const &other);
    FileIsDirectory &operator=(FileIsDirectory const &other);
    ~FileIsDirectory() override;
};

/// Codes 80 and 183: something of that name is there already.
class FL_FILESYSTEM_API FileExistsError : public FsysExceptionBase
{
public:
    /// About `path`, or about no pathname.
    FileExistsError();
    explicit FileExistsError(std::u16string const &path);
    FileExistsError(FileExistsError const &other);
    FileExistsError &operator=(FileExistsError const &other);
    ~FileExistsError() override;
};

/// Never raised by the library; for callers that compare pathnames themselves.
class FL_FILESYSTEM_API PathNameComparisonFailure : public FsysExceptionBase
{
public:
    /// About no pathname.
    PathNameComparisonFailure();
    PathNameComparisonFailure(PathNameComparisonFailure const &other);
    PathNameComparisonFailure &operator=(PathNameComparisonFailure const &other);
    ~PathNameComparisonFailure() override;
};

/// Every system code without a class of its own. The code and both pathnames of
/// the operation are kept.
class FL_FILESYSTEM_API SystemError : public FsysExceptionBase
{
public:
    /// Holds the arguments; a default one has the code 0 and no pathnames.
    SystemError();
    explicit SystemError(
        unsigned int error_code, std::u16string const &path = std::u16string(),
        std::vector<std::u16string> const &additional_path_names = std::vector<std::u16string>());
    SystemError(SystemError const &other);
    SystemError &operator=(SystemError const &other);
    ~SystemError() override;
};

/// Never raised by the library; for callers that look for a temporary folder.
class FL_FILESYSTEM_API TempEnvNotSpecified : public FsysExceptionBase
{
public:
    /// About no pathname.
    TempEnvNotSpecified();
    TempEnvNotSpecified(TempEnvNotSpecified const &other);
    TempEnvNotSpecified &operator=(TempEnvNotSpecified const &other);
    ~TempEnvNotSpecified() override;
};

namespace detail {

/// Throws `InvalidOperation`, for code instantiated in the caller's own
/// translation units. Never returns.
[[noreturn]] FL_FILESYSTEM_API void throw_invalid_operation_exception();

} // namespace detail

} // namespace fl::filesystem

namespace foundation::ustring {

/// The root of what the ASCII-only character routines raise. Not a member of
/// the family above.
class FL_FILESYSTEM_API CtypeExceptionBase : public std::exception
{
public:
    /// Holds the arguments.
    CtypeExceptionBase(char const *message, unsigned int code, unsigned int subcode);
    CtypeExceptionBase(CtypeExceptionBase const &other);
    CtypeExceptionBase &operator=(CtypeExceptionBase const &other);
    ~CtypeExceptionBase() override;

    /// Returns the message.
    char const *what() const noexcept override;

protected:
    /// For classes derived from this one; the numbers have no meaning to a handler.
    std::string message;
    unsigned int code;
    unsigned int subcode;
};

/// A code unit above 127 where only ASCII can be compared or lower-cased.
class FL_FILESYSTEM_API CtypeInvalidCharacter : public CtypeExceptionBase
{
public:
    /// "Invalid character error."
    CtypeInvalidCharacter();
    CtypeInvalidCharacter(CtypeInvalidCharacter const &other);
    CtypeInvalidCharacter &operator=(CtypeInvalidCharacter const &other);
    ~CtypeInvalidCharacter() override;
};

} // namespace foundation::ustring

FL_FILESYSTEM_END_CLASSES

#endif
