#include "handles.hpp"

#include "failure.hpp"

#include <atomic>

namespace fl::simulation {

namespace {

/// A number as the system's: a multiple of four.
HANDLE next_handle()
{
    static std::atomic<std::uintptr_t> last = 0x40;
    return reinterpret_cast<HANDLE>(last += 4);
}

template <typename Held>
std::shared_ptr<Held> demand(std::map<HANDLE, std::shared_ptr<Held>> const &all, HANDLE handle)
{
    auto const found = all.find(handle);
    if (found == all.end())
        throw failure(ERROR_INVALID_HANDLE);
    return found->second;
}

} // namespace

HANDLE handles::add(std::shared_ptr<open_file> file)
{
    HANDLE const handle = next_handle();
    files_[handle] = std::move(file);
    return handle;
}

HANDLE handles::add(std::shared_ptr<search> found)
{
    HANDLE const handle = next_handle();
    searches_[handle] = std::move(found);
    return handle;
}

std::shared_ptr<open_file> handles::file(HANDLE handle) const
{
    return demand(files_, handle);
}

std::shared_ptr<search> handles::find(HANDLE handle) const
{
    return demand(searches_, handle);
}

std::u16string const &handles::text_of(HANDLE handle) const
{
    auto const search = searches_.find(handle);
    return search == searches_.end() ? file(handle)->text : search->second->text;
}

void handles::close_file(HANDLE handle)
{
    demand(files_, handle);
    files_.erase(handle);
}

void handles::close_search(HANDLE handle)
{
    demand(searches_, handle);
    searches_.erase(handle);
}

} // namespace fl::simulation
