#ifndef FL_FILESYSTEM_SRC_PLATFORM_COM_APARTMENT_HPP
#define FL_FILESYSTEM_SRC_PLATFORM_COM_APARTMENT_HPP
// COM on the calling thread, for as long as one call of ours needs it.

#include <windows.h>

#include <objbase.h>

namespace fl::filesystem::detail {

/// Pairs `CoInitialize` with `CoUninitialize`. Must outlive every interface that is
/// used under it, and stays on its thread, so it can be neither copied nor moved.
///
/// What `CoInitialize` answers is not asked: on a thread of the multi-threaded
/// apartment it fails, and the calls go on in that one. It is paired all the same.
class com_apartment
{
public:
    com_apartment() noexcept { static_cast<void>(::CoInitialize(nullptr)); }
    ~com_apartment() { ::CoUninitialize(); }
    com_apartment(com_apartment const &) = delete;
    com_apartment &operator=(com_apartment const &) = delete;
};

} // namespace fl::filesystem::detail

#endif
