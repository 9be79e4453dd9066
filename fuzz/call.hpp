#ifndef FL_FILESYSTEM_FUZZ_CALL_HPP
#define FL_FILESYSTEM_FUZZ_CALL_HPP

#include <fl/filesystem/exceptions.hpp>

namespace fuzz {

/// Calls the library; a failure that it tells is no finding.
template <typename Call>
void call(Call asked)
{
    try {
        asked();
    } catch (fl::filesystem::FsysExceptionBase const &) {
    } catch (foundation::ustring::CtypeExceptionBase const &) {
    }
}

} // namespace fuzz

#endif
