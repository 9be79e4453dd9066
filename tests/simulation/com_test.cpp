#include "platform/shell_link.hpp"
#include "platform/shortcut_files.hpp"

#include <simulation/machine.hpp>

#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

namespace fl::simulation {

namespace {

using contract::apartment;
using contract::code_of;
using contract::shortcut;

TEST(SimulatedCom, CountsInterfacesThatAreHeld)
{
    simulated_machine machine;
    apartment const here;
    EXPECT_EQ(machine.live_interfaces(), 0);
    {
        shortcut const made;
        EXPECT_EQ(machine.live_interfaces(), 2);
        made.link()->AddRef();
        EXPECT_EQ(machine.live_interfaces(), 3);
        made.file()->Release();
        EXPECT_EQ(machine.live_interfaces(), 2);
    }
    EXPECT_EQ(machine.live_interfaces(), 0);
    void *object = nullptr;
    EXPECT_TRUE(FAILED(::CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER,
                                          contract::unknown_id, &object)));
    EXPECT_EQ(machine.live_interfaces(), 0) << "the object goes with the failure";
}

TEST(SimulatedCom, CountsApartments)
{
    simulated_machine machine;
    ::CoInitialize(nullptr);
    ::CoInitialize(nullptr);
    std::thread([&machine] {
        apartment const there;
        EXPECT_EQ(machine.com_apartments(), 1) << "of this thread";
        EXPECT_EQ(machine.all_com_apartments(), 3);
    }).join();
    EXPECT_EQ(machine.com_apartments(), 2);
    EXPECT_EQ(machine.all_com_apartments(), 2);
    EXPECT_TRUE(FAILED(::CoInitializeEx(nullptr, COINIT_MULTITHREADED)));
    EXPECT_EQ(machine.com_apartments(), 2) << "a refused one doesn't count";
    ::CoUninitialize();
    ::CoUninitialize();
    ::CoUninitialize();
    EXPECT_EQ(machine.com_apartments(), 0) << "once too often has no effect";
}

TEST(SimulatedCom, SeesInterfacesOutliveTheLastApartment)
{
    simulated_machine machine;
    ::CoInitialize(nullptr);
    ::CoInitialize(nullptr);
    IShellLinkW *link = nullptr;
    contract::create_link(reinterpret_cast<void **>(&link));
    ASSERT_NE(link, nullptr);
    ::CoUninitialize();
    EXPECT_EQ(machine.orphaned_interfaces(), 0);
    ::CoUninitialize();
    EXPECT_EQ(machine.orphaned_interfaces(), 1);
    link->Release();
    EXPECT_EQ(machine.live_interfaces(), 0);
}

TEST(SimulatedCom, ObjectsOutliveTheirMachine)
{
    IShellLinkW *link = nullptr;
    {
        simulated_machine machine;
        apartment const here;
        contract::create_link(reinterpret_cast<void **>(&link));
    }
    ASSERT_NE(link, nullptr);
    EXPECT_EQ(link->AddRef(), 2U);
    EXPECT_EQ(link->Release(), 1U);
    EXPECT_EQ(link->Release(), 0U);
}

TEST(SimulatedCom, JournalsCallsOfMethods)
{
    simulated_machine machine;
    {
        apartment const here;
        shortcut made;
        made.set_path(L"C:\\");
        made.save(L"C:\\a.lnk");
        made.load(L"C:\\a.lnk");
        made.resolve();
        made.path();
        made.link()->AddRef();
        made.link()->Release();
    }
    std::vector<std::string> names;
    for (journal_entry const &entry : machine.journal())
        names.push_back(entry.function);
    EXPECT_EQ(names, (std::vector<std::string>{
                         "CoInitialize", "CoCreateInstance", "IUnknown::QueryInterface",
                         "IShellLinkW::SetPath", "IPersistFile::Save", "IPersistFile::Load",
                         "IShellLinkW::Resolve", "IShellLinkW::GetPath", "CoUninitialize"}));
    EXPECT_EQ(machine.journal()[3].text, u"C:\\");
    EXPECT_EQ(machine.journal()[5].text, u"C:\\a.lnk");
}

TEST(SimulatedCom, MeetsFaultsByTheirResult)
{
    simulated_machine machine;
    apartment const here;
    shortcut made;
    made.set_path(L"C:\\");
    fault const saving = machine.fail_call("IPersistFile::Save", 1, code_of(E_OUTOFMEMORY));
    EXPECT_EQ(made.save(L"C:\\a.lnk"), code_of(E_OUTOFMEMORY));
    EXPECT_EQ(machine.journal().back().answer, 0x8007000EU);
    EXPECT_FALSE(machine.exists(u"C:\\a.lnk")) << "a failed call has no effect";
    fault const resolving = machine.fail_call("IShellLinkW::Resolve", 1, ERROR_IO_DEVICE);
    EXPECT_EQ(made.resolve(), contract::from_win32(ERROR_IO_DEVICE)) << "made a result";
    fault const asking = machine.fail_call("IUnknown::QueryInterface", 1, code_of(E_NOINTERFACE));
    void *object = &object;
    EXPECT_EQ(code_of(made.link()->QueryInterface(IID_IPersistFile, &object)),
              code_of(E_NOINTERFACE));
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(machine.live_interfaces(), 2);
    EXPECT_EQ(::GetLastError(), stale_last_error) << "COM leaves nothing there";
}

TEST(SimulatedCom, FailsToStartAndNeverToEnd)
{
    simulated_machine machine;
    fault const starting = machine.fail_call("CoInitialize", 1, code_of(E_OUTOFMEMORY));
    EXPECT_EQ(::CoInitialize(nullptr), E_OUTOFMEMORY);
    EXPECT_EQ(machine.com_apartments(), 0);
    EXPECT_EQ(::CoInitialize(nullptr), S_OK);
    fault const creating = machine.fail_call("CoCreateInstance", 1, code_of(REGDB_E_CLASSNOTREG));
    void *object = &object;
    EXPECT_EQ(contract::create_link(&object), code_of(REGDB_E_CLASSNOTREG));
    EXPECT_EQ(object, nullptr);
    fault const ending = machine.fail_call("CoUninitialize", 1, code_of(E_FAIL));
    ::CoUninitialize();
    EXPECT_TRUE(ending.fired());
    EXPECT_EQ(machine.com_apartments(), 0) << "it has ended all the same";
}

TEST(SimulatedCom, RefusesWhatTheMachineHasNothingFor)
{
    simulated_machine machine;
    apartment const here;
    shortcut const made;
    wchar_t buffer[10];
    EXPECT_EQ(made.link()->GetDescription(buffer, 10), E_NOTIMPL);
    EXPECT_EQ(made.link()->SetArguments(L"a"), E_NOTIMPL);
    EXPECT_EQ(made.link()->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
    EXPECT_EQ(made.link()->GetPath(nullptr, 10, nullptr, 0), E_INVALIDARG);
    EXPECT_EQ(made.file()->Save(nullptr, TRUE), E_FAIL) << "it has no file yet";
    EXPECT_EQ(made.file()->Load(nullptr, STGM_READ), E_INVALIDARG);
}

TEST(Shortcuts, AreMadeAndReadByTests)
{
    simulated_machine machine;
    apartment const here;
    machine.add_shortcut(u"C:\\dir\\a.lnk", u"\\\\server\\share\\\u0416");
    shortcut made;
    EXPECT_EQ(made.load(L"C:\\dir\\a.lnk"), contract::yes);
    EXPECT_EQ(made.path(), L"\\\\server\\share\\\u0416");
    made.set_path(L"D:\\other");
    EXPECT_EQ(code_of(made.file()->IsDirty()), contract::yes);
    EXPECT_EQ(code_of(made.file()->Save(L"C:\\copy.lnk", FALSE)), contract::yes);
    EXPECT_EQ(code_of(made.file()->IsDirty()), contract::yes) << "it was a copy";
    EXPECT_EQ(machine.shortcut_target(u"C:\\copy.lnk"), u"D:\\other");
    machine.add_file(u"C:\\text", "no shortcut");
    EXPECT_THROW(machine.shortcut_target(u"C:\\text"), std::invalid_argument);
}

// Read-only files stay, and nobody makes files where that is denied.
TEST(Shortcuts, AreSavedWhereTheCallerMay)
{
    simulated_machine machine;
    apartment const here;
    machine.add_directory(u"C:\\closed").add_file(u"C:\\old.lnk", "text");
    machine.deny_creation(u"C:\\closed").set_attributes(u"C:\\old.lnk", FILE_ATTRIBUTE_READONLY);
    shortcut made;
    EXPECT_EQ(made.save(L"C:\\closed\\a.lnk"), contract::from_win32(ERROR_ACCESS_DENIED));
    EXPECT_EQ(made.save(L"C:\\old.lnk"), contract::from_win32(ERROR_ACCESS_DENIED));
    EXPECT_EQ(machine.content(u"C:\\old.lnk"), "text");
    EXPECT_EQ(made.save(L"C:\\"), contract::from_win32(ERROR_ACCESS_DENIED));
    EXPECT_EQ(made.save(L"C:\\new.lnk\\"), contract::from_win32(ERROR_INVALID_NAME));
}

DWORD load_of(simulated_machine &machine, std::string const &content)
{
    machine.add_file(u"C:\\a.lnk", content);
    shortcut made;
    return made.load(L"C:\\a.lnk");
}

// Whatever is cut off, the file is either read as a whole or refused.
TEST(Shortcuts, AreReadWithinTheirBytes)
{
    simulated_machine machine;
    apartment const here;
    for (std::string const &whole : {contract::content_of(contract::wine_drive_shortcut),
                                     contract::content_of(contract::unicode_shortcut)}) {
        std::size_t const needed = whole.size() - 4; // the block that ends the file
        for (std::size_t size = 0; size <= whole.size(); ++size) {
            DWORD const code = size < needed ? contract::garbage : contract::yes;
            EXPECT_EQ(load_of(machine, whole.substr(0, size)), code) << size;
        }
    }
}

TEST(Shortcuts, SurviveBrokenBytes)
{
    simulated_machine machine;
    apartment const here;
    std::string const whole = contract::content_of(contract::unicode_shortcut);
    for (std::size_t i = 0; i < whole.size(); ++i) {
        for (char const broken : {'\0', '\x7F', '\xFF'}) {
            std::string bytes = whole;
            bytes[i] = broken;
            DWORD const code = load_of(machine, bytes);
            EXPECT_TRUE(code == contract::yes || code == contract::garbage) << i;
        }
    }
}

} // namespace

} // namespace fl::simulation
