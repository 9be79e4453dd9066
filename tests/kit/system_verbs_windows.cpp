// By the system's own means: access control lists, and drives that stand for folders.

#include "kit/library_verbs.hpp"

#include <sddl.h>

#include <sstream>
#include <stdexcept>

namespace kit {

using contract::outcome_of;
using contract::facts::stage;
using contract::facts::words;

namespace {

/// Replaces the access control list of a file or directory. `text` is in Microsoft's notation.
DWORD set_access(std::wstring const &name, std::wstring const &text)
{
    PSECURITY_DESCRIPTOR list = nullptr;
    DWORD const code = outcome_of([&] {
        return ::ConvertStringSecurityDescriptorToSecurityDescriptorW(text.c_str(), SDDL_REVISION_1,
                                                                      &list, nullptr) != FALSE;
    });
    if (code != contract::success)
        return code;
    DWORD const outcome = outcome_of(
        [&] { return ::SetFileSecurityW(name.c_str(), DACL_SECURITY_INFORMATION, list) != FALSE; });
    ::LocalFree(list);
    return outcome;
}

/// Denied to everybody; all else is allowed. The owner may change the list, whatever it says.
std::wstring list_without(DWORD rights)
{
    std::wostringstream text;
    text << L"D:P";
    if (rights != 0)
        text << L"(D;;0x" << std::hex << rights << L";;;WD)";
    text << L"(A;;FA;;;WD)";
    return text.str();
}

DWORD deny(stage &on, words const &said, std::string &)
{
    static std::map<std::string, DWORD> const rights = {
        {"read", FILE_READ_DATA},
        {"write", FILE_WRITE_DATA},
        {"list", FILE_LIST_DIRECTORY},
        {"create", FILE_ADD_FILE | FILE_ADD_SUBDIRECTORY},
        {"remove", DELETE},
        {"attributes", FILE_READ_ATTRIBUTES},
        {"children", FILE_DELETE_CHILD},
        {"nothing", 0},
    };
    std::wstring const name = contract::wide(on.place(said.at(1)));
    DWORD const code = set_access(name, list_without(rights.at(said.at(2))));
    if (code != contract::success)
        throw std::runtime_error("the access control list is refused: " + std::to_string(code));
    on.at_end([name] { set_access(name, list_without(0)); });
    return contract::success;
}

DWORD subst(stage &on, words const &said, std::string &)
{
    std::wstring const drive = on.text(said.at(1));
    std::wstring const folder = on.text(said.at(2));
    if (contract::get_file_attributes(drive + L'\\') == contract::success)
        throw std::runtime_error("there is such a drive already");
    DWORD const code =
        outcome_of([&] { return ::DefineDosDeviceW(0, drive.c_str(), folder.c_str()) != FALSE; });
    if (code != contract::success)
        throw std::runtime_error("no drive can be laid over a folder: " + std::to_string(code));
    on.at_end([drive, folder] {
        ::DefineDosDeviceW(DDD_REMOVE_DEFINITION | DDD_EXACT_MATCH_ON_REMOVE, drive.c_str(),
                           folder.c_str());
    });
    return contract::success;
}

} // namespace

contract::facts::verb_table system_verbs()
{
    return {{"deny", &deny}, {"subst", &subst}};
}

} // namespace kit
