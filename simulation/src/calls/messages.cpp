#include "calls/call.hpp"

#include <algorithm>
#include <cstdarg>

namespace fl::simulation {

namespace {

struct message
{
    DWORD code;
    std::u16string_view text;
};

/// The English texts that Microsoft documents, of codes that the machine and the library have to
/// do with, but those with inserts.
constexpr message messages[] = {
    {ERROR_INVALID_FUNCTION, u"Incorrect function."},
    {ERROR_FILE_NOT_FOUND, u"The system cannot find the file specified."},
    {ERROR_PATH_NOT_FOUND, u"The system cannot find the path specified."},
    {ERROR_TOO_MANY_OPEN_FILES, u"The system cannot open the file."},
    {ERROR_ACCESS_DENIED, u"Access is denied."},
    {ERROR_INVALID_HANDLE, u"The handle is invalid."},
    {ERROR_NOT_ENOUGH_MEMORY, u"Not enough storage is available to process this command."},
    {ERROR_INVALID_DRIVE, u"The system cannot find the drive specified."},
    {ERROR_CURRENT_DIRECTORY, u"The directory cannot be removed."},
    {ERROR_NOT_SAME_DEVICE, u"The system cannot move the file to a different disk drive."},
    {ERROR_NO_MORE_FILES, u"There are no more files."},
    {ERROR_WRITE_PROTECT, u"The media is write protected."},
    {ERROR_NOT_READY, u"The device is not ready."},
    {ERROR_BAD_LENGTH, u"The program issued a command but the command length is incorrect."},
    {ERROR_GEN_FAILURE, u"A device attached to the system is not functioning."},
    {ERROR_SHARING_VIOLATION, u"The process cannot access the file because it is being used by "
                              u"another process."},
    {ERROR_LOCK_VIOLATION, u"The process cannot access the file because another process has "
                           u"locked a portion of the file."},
    {ERROR_HANDLE_EOF, u"Reached the end of the file."},
    {ERROR_NOT_SUPPORTED, u"The request is not supported."},
    {ERROR_BAD_NETPATH, u"The network path was not found."},
    {ERROR_NETNAME_DELETED, u"The specified network name is no longer available."},
    {ERROR_BAD_DEV_TYPE, u"The network resource type is not correct."},
    {ERROR_BAD_NET_NAME, u"The network name cannot be found."},
    {ERROR_FILE_EXISTS, u"The file exists."},
    {ERROR_INVALID_PARAMETER, u"The parameter is incorrect."},
    {ERROR_OPEN_FAILED, u"The system cannot open the device or file specified."},
    {ERROR_DISK_FULL, u"There is not enough space on the disk."},
    {ERROR_CALL_NOT_IMPLEMENTED, u"This function is not supported on this system."},
    {ERROR_INSUFFICIENT_BUFFER, u"The data area passed to a system call is too small."},
    {ERROR_INVALID_NAME, u"The filename, directory name, or volume label syntax is incorrect."},
    {ERROR_MOD_NOT_FOUND, u"The specified module could not be found."},
    {ERROR_DIR_NOT_EMPTY, u"The directory is not empty."},
    {ERROR_BAD_PATHNAME, u"The specified path is invalid."},
    {ERROR_ALREADY_EXISTS, u"Cannot create a file when that file already exists."},
    {ERROR_ENVVAR_NOT_FOUND, u"The system could not find the environment option that was entered."},
    {ERROR_FILENAME_EXCED_RANGE, u"The filename or extension is too long."},
    {ERROR_MORE_DATA, u"More data is available."},
    {ERROR_DIRECTORY, u"The directory name is invalid."},
    {ERROR_OPERATION_ABORTED, u"The I/O operation has been aborted because of either a thread "
                              u"exit or an application request."},
    {ERROR_NOACCESS, u"Invalid access to memory location."},
    {ERROR_IO_DEVICE, u"The request could not be performed because of an I/O device error."},
    {ERROR_TOO_MANY_LINKS, u"An attempt was made to create more links on a file than the file "
                           u"system supports."},
    {ERROR_BAD_DEVICE, u"The specified device name is invalid."},
    {ERROR_NO_NETWORK, u"The network is not present or not started."},
    {ERROR_PRIVILEGE_NOT_HELD, u"A required privilege is not held by the client."},
    {ERROR_INCORRECT_SIZE, u"Incorrect size argument."},
    {ERROR_SYMLINK_CLASS_DISABLED,
     u"The symbolic link cannot be followed because its type is disabled."},
    {ERROR_CANT_ACCESS_FILE, u"The file cannot be accessed by the system."},
    {ERROR_CANT_RESOLVE_FILENAME, u"The name of the file cannot be resolved by the system."},
    {ERROR_NOT_CONNECTED, u"This network connection does not exist."},
    {ERROR_NOT_A_REPARSE_POINT, u"The file or directory is not a reparse point."},
    {ERROR_REPARSE_ATTRIBUTE_CONFLICT, u"The reparse point attribute cannot be set because it "
                                       u"conflicts with an existing attribute."},
    {ERROR_INVALID_REPARSE_DATA, u"The data present in the reparse point buffer is invalid."},
    {ERROR_REPARSE_TAG_INVALID, u"The tag present in the reparse point buffer is invalid."},
    {ERROR_REPARSE_TAG_MISMATCH, u"There is a mismatch between the tag specified in the request "
                                 u"and the tag present in the reparse point."},
};

std::u16string_view message_of(DWORD code)
{
    auto const *const found = std::find_if(std::begin(messages), std::end(messages),
                                           [=](message const &row) { return row.code == code; });
    if (found == std::end(messages))
        throw failure(ERROR_MR_MID_NOT_FOUND);
    return found->text;
}

} // namespace

} // namespace fl::simulation

// Only the system's own texts, in English, into a buffer of the caller's.
extern "C" DWORD FormatMessageW(DWORD flags, LPCVOID, DWORD code, DWORD language, LPWSTR buffer,
                                DWORD room, va_list *)
{
    using namespace fl::simulation;
    call const made{.function = "FormatMessageW", .flags = flags, .room = room, .pathnames = 0};
    return perform(made, DWORD{0}, [&](machine_state &) {
        bool const one_line =
            (flags & FORMAT_MESSAGE_MAX_WIDTH_MASK) == FORMAT_MESSAGE_MAX_WIDTH_MASK;
        DWORD const rest = flags & ~static_cast<DWORD>(FORMAT_MESSAGE_MAX_WIDTH_MASK);
        if (rest != (FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS) || language != 0)
            throw failure(ERROR_CALL_NOT_IMPLEMENTED);
        // what ends each text is a line break, which becomes a blank where lines have no end
        std::u16string const text = std::u16string(message_of(code)) + (one_line ? u" " : u"\r\n");
        if (text.size() >= room)
            throw failure(ERROR_INSUFFICIENT_BUFFER);
        return hand_over(text, room, buffer);
    });
}
