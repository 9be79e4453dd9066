#include "platform/shell_link.hpp"

#include <thread>

namespace contract {

namespace {

/// Creates an object and lets it go.
DWORD try_to_create()
{
    IShellLinkW *made = nullptr;
    DWORD const code = create_link(reinterpret_cast<void **>(&made));
    EXPECT_EQ(made != nullptr, code == yes);
    if (made != nullptr)
        made->Release();
    return code;
}

/// Runs a test on a thread of its own, in no apartment.
template <typename Test>
void on_a_thread(Test test)
{
    std::thread(test).join();
}

constexpr DWORD not_initialized = 0x800401F0;
constexpr DWORD changed_mode = 0x80010106;

TEST(Com, HasToBeInitializedOnTheThread)
{
    apartment const here;
    EXPECT_EQ(try_to_create(), yes);
    on_a_thread([] {
        EXPECT_EQ(try_to_create(), not_initialized);
        EXPECT_EQ(code_of(::CoInitialize(nullptr)), yes);
        EXPECT_EQ(try_to_create(), yes);
        ::CoUninitialize();
        EXPECT_EQ(try_to_create(), not_initialized);
    });
    EXPECT_EQ(try_to_create(), yes) << "other threads don't matter";
}

TEST(Com, CountsInitializations)
{
    on_a_thread([] {
        EXPECT_EQ(code_of(::CoInitialize(nullptr)), yes);
        EXPECT_EQ(code_of(::CoInitialize(nullptr)), no);
        EXPECT_EQ(code_of(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)), no);
        ::CoUninitialize();
        ::CoUninitialize();
        EXPECT_EQ(try_to_create(), yes) << "one is left";
        ::CoUninitialize();
        EXPECT_EQ(try_to_create(), not_initialized);
        EXPECT_EQ(code_of(::CoInitialize(nullptr)), yes);
        ::CoUninitialize();
    });
}

TEST(Com, KeepsTheKindOfAnApartment)
{
    on_a_thread([] {
        EXPECT_EQ(code_of(::CoInitializeEx(nullptr, COINIT_MULTITHREADED)), yes);
        EXPECT_EQ(code_of(::CoInitialize(nullptr)), changed_mode);
        EXPECT_EQ(code_of(::CoInitializeEx(nullptr, COINIT_MULTITHREADED)), no);
        EXPECT_EQ(try_to_create(), yes) << "objects are made there as well";
        ::CoUninitialize();
        EXPECT_EQ(try_to_create(), yes) << "the refused one doesn't count";
        ::CoUninitialize();
        EXPECT_EQ(code_of(::CoInitialize(nullptr)), yes) << "the kind is free again";
        EXPECT_EQ(code_of(::CoInitializeEx(nullptr, COINIT_MULTITHREADED)), changed_mode);
        ::CoUninitialize();
    });
}

// A thread without an apartment is in the multi-threaded one, if there is one.
TEST(Com, LendsTheMultiThreadedApartment)
{
    on_a_thread([] {
        ASSERT_EQ(code_of(::CoInitializeEx(nullptr, COINIT_MULTITHREADED)), yes);
        on_a_thread([] { EXPECT_EQ(try_to_create(), yes); });
        ::CoUninitialize();
        on_a_thread([] { EXPECT_EQ(try_to_create(), not_initialized); });
    });
}

TEST(Com, WorksOnManyThreads)
{
    auto const work = [] {
        for (int i = 0; i < 20; ++i) {
            apartment const here;
            shortcut made;
            EXPECT_EQ(made.set_path(LR"(C:\)"), yes);
            EXPECT_EQ(made.path(), LR"(C:\)");
        }
    };
    std::thread one(work);
    std::thread other(work);
    one.join();
    other.join();
}

TEST(Com, KnowsItsClasses)
{
    apartment const here;
    void *object = &object;
    EXPECT_EQ(code_of(::CoCreateInstance(unknown_id, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW,
                                         &object)),
              0x80040154U);
    EXPECT_EQ(object, nullptr) << "a failure leaves no pointer behind";
    EXPECT_EQ(code_of(::CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_LOCAL_SERVER,
                                         IID_IShellLinkW, &object)),
              0x80040154U)
        << "the class lives in the process";
    object = &object;
    EXPECT_EQ(code_of(::CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, unknown_id,
                                         &object)),
              0x80004002U);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(code_of(::CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER,
                                         IID_IShellLinkW, nullptr)),
              0x80004003U);
}

TEST(Com, RefusesToAggregateTheLink)
{
    apartment const here;
    shortcut const outer;
    void *object = &object;
    EXPECT_EQ(code_of(::CoCreateInstance(CLSID_ShellLink, outer.link(), CLSCTX_INPROC_SERVER,
                                         IID_IUnknown, &object)),
              0x80040110U);
    EXPECT_EQ(object, nullptr);
}

} // namespace

} // namespace contract
