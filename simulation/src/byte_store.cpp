#include "byte_store.hpp"

#include <algorithm>

namespace fl::simulation {

void byte_store::resize(std::uint64_t size)
{
    if (size < size_) {
        pages_.erase(pages_.lower_bound((size + page_size - 1) / page_size), pages_.end());
        std::size_t const kept = size % page_size;
        if (kept != 0 && pages_.contains(size / page_size)) {
            std::string &last = writable_page(size / page_size);
            last.resize(std::min(last.size(), kept));
        }
    }
    size_ = size;
}

std::size_t byte_store::read(std::uint64_t offset, char *buffer, std::size_t count) const
{
    if (offset >= size_)
        return 0;
    std::size_t const total = std::min<std::uint64_t>(count, size_ - offset);
    std::fill(buffer, buffer + total, '\0');
    for (std::size_t done = 0; done < total;) {
        std::size_t const begin = (offset + done) % page_size;
        std::size_t const length = std::min(total - done, page_size - begin);
        auto const found = pages_.find((offset + done) / page_size);
        if (found != pages_.end() && begin < found->second->size())
            found->second->copy(buffer + done, length, begin);
        done += length;
    }
    return total;
}

void byte_store::write(std::uint64_t offset, std::string_view bytes)
{
    for (std::size_t done = 0; done < bytes.size();) {
        std::size_t const begin = (offset + done) % page_size;
        std::size_t const length = std::min(bytes.size() - done, page_size - begin);
        std::string &held = writable_page((offset + done) / page_size);
        held.resize(std::max(held.size(), begin + length));
        held.replace(begin, length, bytes.substr(done, length));
        done += length;
    }
    size_ = std::max(size_, offset + bytes.size());
}

std::string byte_store::text() const
{
    std::string bytes(static_cast<std::size_t>(size_), '\0');
    read(0, bytes.data(), bytes.size());
    return bytes;
}

std::string &byte_store::writable_page(std::uint64_t number)
{
    page &found = pages_[number];
    if (!found)
        found = std::make_shared<std::string>();
    else if (found.use_count() > 1)
        found = std::make_shared<std::string>(*found);
    return *found;
}

} // namespace fl::simulation
