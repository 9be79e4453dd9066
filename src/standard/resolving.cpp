#include "standard/filesystem.hpp"

#include "pathname/long_prefix.hpp"
#include "standard/codes.hpp"
#include "standard/identity.hpp"
#include "standard/lexical.hpp"
#include "standard/opening.hpp"

#include <windows.h>

#include <algorithm>
#include <utility>

namespace fl::filesystem::detail::standard {

std::wstring canonical(std::wstring const &text, std::error_code &ec)
{
    ec.clear();
    auto const [file, code] = open_target(text);
    if (!file) {
        ec = system_code(code);
        return {};
    }
    std::wstring path = final_path(file, ec);
    if (path.starts_with(global_root)) // without its prefix it would lead elsewhere
        return path;
    return std::move(strip_long_path_prefix(path, path.size(), std::wstring::npos));
}

std::wstring weakly_canonical(std::wstring const &text, std::error_code &ec)
{
    std::wstring head = canonical(text, ec);
    if (!ec || !is_not_found(ec))
        return head;
    ec.clear();
    std::vector<std::wstring_view> const elements = elements_of(text);
    auto const missing =
        std::find_if(elements.begin(), elements.end(), [&](std::wstring_view element) {
            std::wstring candidate = head;
            join(candidate, element);
            status(candidate, ec);
            if (!ec)
                head = std::move(candidate);
            return static_cast<bool>(ec);
        });
    if (ec && !is_not_found(ec))
        return {};
    ec.clear();
    if (!head.empty())
        head = canonical(head, ec);
    if (ec)
        return {};
    std::for_each(missing, elements.end(), [&](std::wstring_view element) { join(head, element); });
    return lexically_normal(head);
}

std::wstring relative(std::wstring const &text, std::wstring const &base, std::error_code &ec)
{
    std::wstring const to = weakly_canonical(text, ec);
    if (ec)
        return {};
    std::wstring const from = weakly_canonical(base, ec);
    return ec ? std::wstring() : lexically_relative(to, from);
}

bool equivalent(std::wstring const &left, std::wstring const &right, std::error_code &ec)
{
    ec.clear();
    file_identity first;
    file_identity second;
    return read_identity(left, first, ec) && read_identity(right, second, ec) && first == second;
}

} // namespace fl::filesystem::detail::standard
