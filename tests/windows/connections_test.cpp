// Connection points and their enumerators, as containers and debuggers walk them.

#include "tests/windows/com_test.h"
#include "tests/windows/counting_sink.h"

#include <ocidl.h>
#include <olectl.h>

namespace cvlog::tests {
namespace {

class Connections : public ComTest {
protected:
    void SetUp() override {
        ComTest::SetUp();
        log_ = create(L"CVLog3.CVLog");
        ASSERT_EQ(log_.As(&container_), S_OK);
        ASSERT_EQ(container_->FindConnectionPoint(com::kLogEvents, &point_), S_OK);
    }
    void TearDown() override {
        point_.Reset();
        container_.Reset();
        log_.Reset();
        for (const CountingSink& sink : sinks_) EXPECT_EQ(sink.references, 1U);
        ComTest::TearDown();
    }
    void adviseAll() {
        for (std::size_t i = 0; i < 3; ++i) ASSERT_EQ(point_->Advise(&sinks_[i], &cookies_[i]), S_OK);
    }
    ComPtr<IEnumConnections> enumerate() {
        ComPtr<IEnumConnections> connections;
        EXPECT_EQ(point_->EnumConnections(&connections), S_OK);
        return connections;
    }
    /// The place of the next connection among the sinks; -1 at the end.
    int next(IEnumConnections* connections) {
        CONNECTDATA data = {};
        const HRESULT result = connections->Next(1, &data, nullptr);
        EXPECT_EQ(data.pUnk ? S_OK : S_FALSE, result);
        if (!data.pUnk) return -1;
        data.pUnk->Release();
        int place = 0;
        while (place < 3 && data.pUnk != &sinks_[place]) ++place;
        EXPECT_LT(place, 3) << "an unknown sink";
        EXPECT_EQ(data.dwCookie, cookies_[place % 3]);
        return place;
    }

    ComPtr<IDispatch> log_;
    ComPtr<IConnectionPointContainer> container_;
    ComPtr<IConnectionPoint> point_;
    CountingSink sinks_[3];
    DWORD cookies_[3] = {};
};

TEST_F(Connections, OfAPointNobodyListensToAreNone) {
    const ComPtr<IEnumConnections> connections = enumerate();
    EXPECT_EQ(next(connections.Get()), -1);
    EXPECT_EQ(connections->Skip(0), S_OK);
    EXPECT_EQ(connections->Skip(1), S_FALSE);
}

TEST_F(Connections, AreGivenInTheirOrderWithCookieAndSink) {
    adviseAll();
    const ComPtr<IEnumConnections> connections = enumerate();
    for (const int expected : {0, 1, 2, -1}) EXPECT_EQ(next(connections.Get()), expected);
    EXPECT_EQ(connections->Reset(), S_OK);
    EXPECT_EQ(connections->Skip(1), S_OK);
    EXPECT_EQ(next(connections.Get()), 1);
    EXPECT_EQ(connections->Skip(2), S_FALSE);
    EXPECT_EQ(next(connections.Get()), -1);
}

TEST_F(Connections, AreGivenSeveralAtATimeWithAReferenceEach) {
    adviseAll();
    const ComPtr<IEnumConnections> connections = enumerate();
    const ULONG held = sinks_[0].references;
    CONNECTDATA data[4] = {};
    ULONG fetched = 99;
    EXPECT_EQ(connections->Next(4, data, &fetched), S_FALSE);
    ASSERT_EQ(fetched, 3U);
    EXPECT_EQ(sinks_[0].references, held + 1);
    for (ULONG i = 0; i < fetched; ++i) {
        EXPECT_EQ(data[i].dwCookie, cookies_[i]);
        EXPECT_EQ(data[i].pUnk->Release(), held);
    }
    EXPECT_EQ(connections->Next(1, data, &fetched), S_FALSE);
    EXPECT_EQ(fetched, 0U);
    EXPECT_EQ(connections->Next(0, data, &fetched), S_OK);
    EXPECT_EQ(connections->Next(2, data, nullptr), E_POINTER) << "several at a time need a count";
    EXPECT_EQ(connections->Next(1, nullptr, &fetched), E_POINTER);
}

TEST_F(Connections, AreThoseOfTheMomentOfAsking) {
    adviseAll();
    const ComPtr<IEnumConnections> connections = enumerate();
    ComPtr<IEnumConnections> copy;
    EXPECT_EQ(next(connections.Get()), 0);
    EXPECT_EQ(connections->Clone(&copy), S_OK);
    for (const DWORD cookie : cookies_) EXPECT_EQ(point_->Unadvise(cookie), S_OK);
    EXPECT_EQ(next(connections.Get()), 1);
    EXPECT_EQ(next(connections.Get()), 2);
    EXPECT_EQ(next(copy.Get()), 1) << "a copy starts where its original was";
    EXPECT_EQ(copy->Reset(), S_OK);
    EXPECT_EQ(next(copy.Get()), 0);
    EXPECT_EQ(next(enumerate().Get()), -1);
    EXPECT_EQ(connections->Clone(nullptr), E_POINTER);
    EXPECT_EQ(point_->EnumConnections(nullptr), E_POINTER);
}

TEST_F(Connections, OutliveTheLog) {
    adviseAll();
    const ComPtr<IEnumConnections> connections = enumerate();
    point_.Reset();
    container_.Reset();
    log_.Reset();
    for (const int expected : {0, 1, 2, -1}) EXPECT_EQ(next(connections.Get()), expected);
}

TEST_F(Connections, GoThroughTheOnePointThatTheLogHas) {
    ComPtr<IEnumConnectionPoints> points;
    ASSERT_EQ(container_->EnumConnectionPoints(&points), S_OK);
    IConnectionPoint* given[2] = {};
    ULONG fetched = 0;
    EXPECT_EQ(points->Next(2, given, &fetched), S_FALSE);
    ASSERT_EQ(fetched, 1U);
    EXPECT_EQ(given[0], point_.Get());
    given[0]->Release();
    EXPECT_EQ(points->Next(1, given, nullptr), S_FALSE);
    EXPECT_EQ(points->Reset(), S_OK);
    EXPECT_EQ(points->Skip(1), S_OK);
    ComPtr<IEnumConnectionPoints> copy;
    EXPECT_EQ(points->Clone(&copy), S_OK);
    EXPECT_EQ(copy->Next(1, given, nullptr), S_FALSE);
    ComPtr<IUnknown> unknown;
    EXPECT_EQ(points.CopyTo(IID_IUnknown, reinterpret_cast<void**>(unknown.GetAddressOf())), S_OK);
    EXPECT_EQ(points->QueryInterface(IID_IEnumConnections, reinterpret_cast<void**>(given)), E_NOINTERFACE);
    EXPECT_EQ(container_->EnumConnectionPoints(nullptr), E_POINTER);
}

TEST_F(Connections, OfThePointLeadBackToItsContainer) {
    ComPtr<IConnectionPointContainer> container;
    EXPECT_EQ(point_->GetConnectionPointContainer(&container), S_OK);
    EXPECT_EQ(container.Get(), container_.Get());
    IID events = {};
    EXPECT_EQ(point_->GetConnectionInterface(&events), S_OK);
    EXPECT_EQ(events, com::kLogEvents);
    ComPtr<IConnectionPoint> unknown;
    EXPECT_EQ(container_->FindConnectionPoint(IID_IOleObject, &unknown), CONNECT_E_NOCONNECTION);
    EXPECT_EQ(unknown.Get(), nullptr);
}

TEST_F(Connections, AreRefusedToWhatCannotListen) {
    DWORD cookie = 7;
    EXPECT_EQ(point_->Advise(nullptr, &cookie), E_POINTER);
    EXPECT_EQ(point_->Advise(&sinks_[0], nullptr), E_POINTER);
    EXPECT_EQ(point_->Advise(enumerate().Get(), &cookie), CONNECT_E_CANNOTCONNECT);
    EXPECT_EQ(cookie, 0U);
    EXPECT_EQ(point_->Unadvise(4711), CONNECT_E_NOCONNECTION);
}

} // namespace
} // namespace cvlog::tests
