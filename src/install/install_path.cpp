#include <fl/filesystem/install_path.hpp>

#include <fl/filesystem/operations.hpp>
#include <fl/filesystem/pathname.hpp>

#include "install/install_root.hpp"
#include "install/true_case.hpp"
#include "pathname/long_prefix.hpp"
#include "platform/code_units.hpp"

#include <boost/thread/once.hpp>

#include <algorithm>
#include <atomic>
#include <utility>

namespace fl::filesystem {

namespace {

boost::once_flag install_path_once = BOOST_ONCE_INIT;

/// Never freed: other modules may ask while the process ends.
std::atomic<std::u16string *> install_path = nullptr;

void find_install_path()
{
    // any function of this module will do
    void *const address = reinterpret_cast<void *>(&find_install_path);
    install_path.exchange(new std::u16string(detail::narrow(detail::get_base_path(address))));
}

std::wstring base_of(std::u16string const &module)
{
    std::wstring const text = canonical(upath(module), upath()).wstring();
    std::wstring root = detail::find_install_root(text);
    root.erase(std::find(root.begin(), root.end(), L'\0'), root.end());
    std::wstring base = detail::restore_true_case(root);
    return std::move(detail::strip_long_path_prefix(base, base.size(), std::wstring::npos));
}

} // namespace

std::u16string get_install_path()
{
    boost::call_once(install_path_once, find_install_path);
    return *install_path.load();
}

std::wstring detail::get_base_path(void *address)
{
    std::u16string const module = canonical(get_module_path_from_address(address), {});
    if (module.empty())
        return {};
    try {
        return base_of(module);
    } catch (...) { // whatever it is, there is some answer: the module
        return widen(make_native_form(module, true));
    }
}

} // namespace fl::filesystem
