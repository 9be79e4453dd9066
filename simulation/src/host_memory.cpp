#include "host_memory.hpp"

#include <dlfcn.h>
#include <sys/mman.h>
#include <unistd.h>

namespace fl::simulation {

std::uintptr_t host_image_at(std::uintptr_t address)
{
    Dl_info info{};
    if (dladdr(reinterpret_cast<void const *>(address), &info) == 0)
        return 0;
    return reinterpret_cast<std::uintptr_t>(info.dli_fbase);
}

bool is_host_memory(std::uintptr_t address)
{
    // asks about a page of the host, which may be larger than ours
    std::uintptr_t const unit = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    unsigned char residence = 0;
    void *const page_begin = reinterpret_cast<void *>(address / unit * unit);
    return mincore(page_begin, 1, &residence) == 0;
}

} // namespace fl::simulation
