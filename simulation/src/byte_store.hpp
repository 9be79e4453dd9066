#ifndef FL_SIMULATION_BYTE_STORE_HPP
#define FL_SIMULATION_BYTE_STORE_HPP
// The bytes of a file. What was never written reads as zeros and takes no memory,
// so that a file of many gigabytes is cheap to have and to copy.

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace fl::simulation {

class byte_store
{
public:
    byte_store() = default;
    explicit byte_store(std::string_view bytes) { write(0, bytes); }

    std::uint64_t size() const noexcept { return size_; }
    void resize(std::uint64_t size);

    /// Returns how many bytes there were to read.
    std::size_t read(std::uint64_t offset, char *buffer, std::size_t count) const;
    void write(std::uint64_t offset, std::string_view bytes);

    std::string text() const;

private:
    /// At most `page_size` bytes; those behind its end are zeros. A copy of the
    /// store shares pages until one of them is written.
    using page = std::shared_ptr<std::string>;
    static constexpr std::size_t page_size = 0x10000;

    std::string &writable_page(std::uint64_t number);

    std::uint64_t size_ = 0;
    std::map<std::uint64_t, page> pages_; // by number
};

} // namespace fl::simulation

#endif
