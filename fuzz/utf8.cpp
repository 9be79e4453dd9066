// UTF-8 from and to text: what is taken is what would be made, and any text comes back.

#include "fuzz/input.hpp"

#include <fl/filesystem/exceptions.hpp>
#include <fl/filesystem/path.hpp>
#include <fl/filesystem/text.hpp>
#include <fl/filesystem/utf8.hpp>

using fuzz::must;
namespace ff = fl::filesystem;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    std::string const bytes(reinterpret_cast<char const *>(data), size);
    try {
        std::u16string const read = ff::from_utf8(bytes);
        must(ff::to_utf8(read) == bytes, "what is taken is what would be made");
        must(read.size() <= bytes.size(), "no more units than bytes");
    } catch (ff::FileNameConversionFailure const &) {
        // not UTF-8
    }
    std::u16string const text = fuzz::input(data, size).text(size);
    must(ff::from_utf8(ff::to_utf8(text)) == text, "any text comes back");
    std::string const line = ff::describe(ff::PathNotFound(text));
    for (char const byte : line)
        must(static_cast<unsigned char>(byte) >= 32 && byte != 127, "no raw control character");
    return 0;
}
