#include "calls/com_call.hpp"

#include <shlobj.h>

namespace fl::simulation {

namespace {

HRESULT create_instance(machine_state &machine, REFCLSID of_class, LPUNKNOWN outer, DWORD context,
                        REFIID wanted, LPVOID *object)
{
    if (object == nullptr)
        return E_POINTER;
    *object = nullptr;
    if (!machine.com.is_usable())
        return CO_E_NOTINITIALIZED;
    if (!(of_class == CLSID_ShellLink) || (context & CLSCTX_INPROC_SERVER) == 0)
        return REGDB_E_CLASSNOTREG;
    if (outer != nullptr)
        return CLASS_E_NOAGGREGATION;
    return make_shell_link(machine, wanted, object);
}

HRESULT initialize(char const *function, apartment_kind kind)
{
    return perform_com(function, nullptr, [&](machine_state &machine) {
        return machine.com.enter(kind) ? S_OK : S_FALSE;
    });
}

} // namespace

} // namespace fl::simulation

extern "C" {

IID const IID_IUnknown = {0x00000000, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
IID const IID_IPersist = {0x0000010C, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
IID const IID_IPersistFile = {0x0000010B, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
IID const IID_IShellLinkW = {0x000214F9, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
CLSID const CLSID_ShellLink = {0x00021401, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

HRESULT CoInitialize(LPVOID)
{
    return fl::simulation::initialize("CoInitialize",
                                      fl::simulation::apartment_kind::single_threaded);
}

HRESULT CoInitializeEx(LPVOID, DWORD kind)
{
    using fl::simulation::apartment_kind;
    bool const is_single = (kind & COINIT_APARTMENTTHREADED) != 0;
    return fl::simulation::initialize("CoInitializeEx", is_single ? apartment_kind::single_threaded
                                                                  : apartment_kind::multi_threaded);
}

void CoUninitialize()
{
    using namespace fl::simulation;
    call const made{.function = "CoUninitialize", .happens_anyway = true};
    perform_com(made, [](machine_state &machine) {
        machine.com.leave();
        return S_OK;
    });
}

HRESULT CoCreateInstance(REFCLSID of_class, LPUNKNOWN outer, DWORD context, REFIID wanted,
                         LPVOID *object)
{
    using namespace fl::simulation;
    if (object != nullptr)
        *object = nullptr;
    call const made{.function = "CoCreateInstance", .flags = context};
    return perform_com(made, [&](machine_state &machine) {
        return create_instance(machine, of_class, outer, context, wanted, object);
    });
}

} // extern "C"
