// Several threads use the component at the same time, each with objects of its own: nothing is shared but the library.

#include "tests/windows/invoke_call.h"
#include "tests/windows/loaded_library.h"
#include "tests/windows/script_host.h"

#include <commctrl.h>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace cvlog::tests {
namespace {

/// What one thread does with the component; it counts what went otherwise than expected.
class ThreadAtWork {
public:
    ThreadAtWork(const LoadedLibrary& library, int number) : library_(library), number_(number) {}

    void round() {
        const ComPtr<IDispatch> log = library_.create(com::kLogClass);
        const ComPtr<IDispatch> control = library_.create(com::kControlClass);
        check(log && control);
        if (failures_ > 0) return;
        check(rows(control.Get()) == 0);
        ComPtr<IDispatch> workspace = com::adopt<IDispatch>(makeWorkspace(project_.path()));
        check(open(log.Get(), workspace.Get()));
        workspace.Reset();
        check(callByName(log.Get(), L"SeriesStart", DISPATCH_METHOD, {Variant(L"verify")}) == S_OK);
        for (LONG i = 1; i <= number_; ++i) {
            check(callByName(log.Get(), L"Add", DISPATCH_METHOD,
                             {Variant(L"verify"), Variant(i), Variant(L"O1"), Variant(L"message")}) == S_OK);
            check(rows(control.Get()) == i);
        }
        const ComPtr<IDispatch> second = library_.create(com::kControlClass);
        check(second && rows(second.Get()) == number_);
        check(callByName(log.Get(), L"CloseDB", DISPATCH_METHOD, {}) == S_OK);
        check(rows(control.Get()) == 0 && second && rows(second.Get()) == 0);
        takeMessages();
    }

    int failures() const { return failures_; }
    const std::wstring& folder() const { return project_.path(); }

private:
    void check(bool held) { failures_ += held ? 0 : 1; }
    static bool open(IDispatch* log, IDispatch* workspace) {
        IDispatch* reference = workspace;
        const auto outcome =
            InvokeCall{kOpenDb, DISPATCH_METHOD, {byReference(VT_DISPATCH, &reference)}, {}}.on(log);
        return outcome.result == S_OK && outcome.value.boolVal == VARIANT_TRUE;
    }
    static LRESULT rows(IDispatch* control) {
        Variant handle;
        callByName(control, L"hwnd", DISPATCH_PROPERTYGET, {}, &handle);
        return SendMessageW(reinterpret_cast<HWND>(static_cast<LONG_PTR>(handle.lVal)), LVM_GETITEMCOUNT, 0,
                            0);
    }
    static void takeMessages() {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    }

    const LoadedLibrary& library_;
    LONG number_;
    ProjectFolder project_;
    int failures_ = 0;
};

/// Where threads wait for each other. The library's own barrier has left threads waiting for ever here.
class Meeting {
public:
    explicit Meeting(int threads) : threads_(threads) {}
    void arriveAndWait() {
        std::unique_lock lock(mutex_);
        const int round = round_;
        if (++arrived_ == threads_) {
            arrived_ = 0;
            ++round_;
            all_.notify_all();
        }
        all_.wait(lock, [&] { return round_ != round; });
    }

private:
    std::mutex mutex_;
    std::condition_variable all_;
    int threads_;
    int arrived_ = 0;
    int round_ = 0;
};

class Apartments : public ComTest {};

void runThreads(const LoadedLibrary& library, int threads, int rounds) {
    std::vector<std::unique_ptr<ThreadAtWork>> workers;
    for (int i = 0; i < threads; ++i)
        workers.push_back(std::make_unique<ThreadAtWork>(library, 3 + i)); // no two have as many rows
    Meeting together(threads);
    std::vector<std::thread> running;
    for (const auto& worker : workers)
        running.emplace_back([&together, rounds, &worker = *worker] {
            const HRESULT entered = OleInitialize(nullptr);
            for (int i = 0; i < rounds; ++i) {
                // the first object of an apartment comes as the others' last ones go
                together.arriveAndWait();
                if (SUCCEEDED(entered)) worker.round();
            }
            OleUninitialize();
        });
    for (std::thread& thread : running) thread.join();
    for (const auto& worker : workers) EXPECT_EQ(worker->failures(), 0);
}

TEST_F(Apartments, OfSeveralThreadsShareNothing) {
    const int hostObjects = ScriptedDispatch::alive();
    const LoadedLibrary library;
    ASSERT_TRUE(library.loaded());
    runThreads(library, 2, 40);
    EXPECT_EQ(library.canUnload(), S_OK);
    EXPECT_EQ(ScriptedDispatch::alive(), hostObjects);
}

TEST_F(Apartments, ComeAndGoInLargerNumbers) {
    const LoadedLibrary library;
    ASSERT_TRUE(library.loaded());
    runThreads(library, 6, 8);
    EXPECT_EQ(library.canUnload(), S_OK);
}

TEST_F(Apartments, CountLocksOfAllThreadsTogether) {
    const LoadedLibrary library;
    ASSERT_TRUE(library.loaded());
    constexpr int kThreads = 4;
    constexpr int kLocks = 2'000;
    ComPtr<IClassFactory> factory = library.factory(com::kLogClass);
    std::vector<std::thread> running;
    for (int i = 0; i < kThreads; ++i)
        running.emplace_back([&factory] {
            for (int lock = 0; lock < kLocks; ++lock) {
                factory->LockServer(TRUE);
                factory->LockServer(TRUE);
                factory->LockServer(FALSE);
            }
        });
    for (std::thread& thread : running) thread.join();
    factory.Reset();
    for (int lock = 0; lock < kThreads * kLocks; ++lock) {
        ASSERT_EQ(library.canUnload(), S_FALSE) << "after " << lock << " locks were given back";
        library.factory(com::kLogClass)->LockServer(FALSE);
    }
    EXPECT_EQ(library.canUnload(), S_OK);
}

TEST_F(Apartments, OfOneThreadKeepTheLibraryWhileAnotherUnloadsNothing) {
    const LoadedLibrary library;
    ASSERT_TRUE(library.loaded());
    HRESULT whileAlive = S_OK;
    HRESULT afterwards = S_FALSE;
    std::thread([&] {
        OleInitialize(nullptr);
        {
            const ComPtr<IDispatch> log = library.create(com::kLogClass);
            std::thread([&] { whileAlive = library.canUnload(); }).join();
        }
        std::thread([&] { afterwards = library.canUnload(); }).join();
        OleUninitialize();
    }).join();
    EXPECT_EQ(whileAlive, S_FALSE);
    EXPECT_EQ(afterwards, S_OK);
}

} // namespace
} // namespace cvlog::tests
