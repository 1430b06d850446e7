// Events as a host's sink gets them through the connection point.

#include "tests/windows/com_test.h"
#include "tests/windows/counting_sink.h"

#include <ocidl.h>
#include <olectl.h>

namespace cvlog::tests {
namespace {

class Events : public ComTest {
protected:
    void SetUp() override {
        ComTest::SetUp();
        log_ = create(L"CVLog3.CVLog");
        ComPtr<IConnectionPointContainer> container;
        ASSERT_EQ(log_.As(&container), S_OK);
        ASSERT_EQ(container->FindConnectionPoint(com::kLogEvents, &point_), S_OK);
        ASSERT_EQ(point_->Advise(&sink_, &cookie_), S_OK);
    }
    void TearDown() override {
        sink_.handler = nullptr;
        point_.Reset();
        log_.Reset();
        EXPECT_EQ(sink_.references, 1U) << "a reference to the host's sink is left";
        ComTest::TearDown();
    }
    HRESULT add() {
        return callByName(log_.Get(), L"Add", DISPATCH_METHOD,
                          {Variant(L""), Variant(0L), Variant(L""), Variant(L"m")});
    }

    ComPtr<IDispatch> log_;
    ComPtr<IConnectionPoint> point_;
    CountingSink sink_;
    DWORD cookie_ = 0;
};

TEST_F(Events, EachAddRaisesLogChangedOnce) {
    EXPECT_EQ(add(), S_OK);
    EXPECT_EQ(add(), S_OK);
    EXPECT_EQ(sink_.ids, (std::vector<DISPID>{1, 1}));
}

TEST_F(Events, AFailingSinkIsNotTheCallersConcern) {
    sink_.answer = E_FAIL;
    EXPECT_EQ(add(), S_OK);
    EXPECT_EQ(sink_.ids.size(), 1U);
}

TEST_F(Events, ASinkMayDisconnectItselfInItsHandler) {
    sink_.handler = [&] { EXPECT_EQ(point_->Unadvise(cookie_), S_OK); };
    EXPECT_EQ(add(), S_OK);
    EXPECT_EQ(add(), S_OK);
    EXPECT_EQ(sink_.ids.size(), 1U);
    EXPECT_EQ(point_->Unadvise(cookie_), CONNECT_E_NOCONNECTION);
}

TEST_F(Events, ASinkMayReleaseTheLastReferenceToTheLogInItsHandler) {
    IDispatch* raw = log_.Get();
    DISPID id = 0x6003000e;
    Variant arguments[4] = {Variant(L"m"), Variant(L""), Variant(0L), Variant(L"")};
    DISPPARAMS parameters = {arguments, nullptr, 4, 0};
    sink_.handler = [&] {
        point_.Reset();
        log_.Reset();
    };
    EXPECT_EQ(raw->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, nullptr, nullptr,
                          nullptr),
              S_OK);
    EXPECT_EQ(sink_.ids.size(), 1U);
}

TEST_F(Events, ASinkMayAddAgainThreeLevelsDeep) {
    int depth = 0;
    sink_.handler = [&] {
        if (++depth < 3) {
            EXPECT_EQ(add(), S_OK);
        }
    };
    EXPECT_EQ(add(), S_OK);
    EXPECT_EQ(sink_.ids.size(), 3U);
}

} // namespace
} // namespace cvlog::tests
