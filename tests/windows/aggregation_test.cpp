// The classes as parts of other objects: containers wrap a control into an object of their own that adds members.

#include "tests/windows/com_test.h"
#include "tests/windows/counting_sink.h"
#include "tests/windows/loaded_library.h"

#include <ocidl.h>
#include <oleidl.h>

#include <memory>

namespace cvlog::tests {
namespace {

/// An object that contains another and shows the other's interfaces as its own. It lives on the stack of the test.
class Outer final : public IUnknown {
public:
    STDMETHODIMP QueryInterface(REFIID id, void** result) override {
        if (id != IID_IUnknown) return inner ? inner->QueryInterface(id, result) : E_NOINTERFACE;
        *result = static_cast<IUnknown*>(this);
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; }

    /// The object is the outer's only while it has its reference.
    void letGo() {
        if (inner) std::exchange(inner, nullptr)->Release();
    }

    ULONG references = 1;
    IUnknown* inner = nullptr;
};

const IID kLogInterfaces[] = {IID_IDispatch,         com::kLogInterface,     IID_ISupportErrorInfo,
                              IID_IProvideClassInfo, IID_IProvideClassInfo2, IID_IConnectionPointContainer};
const IID kControlInterfaces[] = {IID_IDispatch,
                                  com::kControlInterface,
                                  IID_ISupportErrorInfo,
                                  IID_IProvideClassInfo,
                                  IID_IProvideClassInfo2,
                                  IID_IOleObject,
                                  IID_IOleWindow,
                                  IID_IOleInPlaceObject,
                                  IID_IOleControl,
                                  IID_IOleInPlaceActiveObject,
                                  IID_IViewObject,
                                  IID_IViewObject2,
                                  IID_IViewObjectEx,
                                  IID_IQuickActivate,
                                  IID_IPerPropertyBrowsing,
                                  IID_ISpecifyPropertyPages,
                                  IID_IDataObject};

class Aggregation : public ComTest {
protected:
    void SetUp() override {
        ComTest::SetUp();
        library_ = std::make_unique<LoadedLibrary>();
        ASSERT_TRUE(library_->loaded());
        ASSERT_EQ(library_->canUnload(), S_OK);
    }
    void TearDown() override {
        EXPECT_EQ(outer_.inner, nullptr);
        EXPECT_EQ(outer_.references, 1U) << "a part holds its whole, or gave back too much";
        EXPECT_EQ(library_->canUnload(), S_OK);
        library_.reset();
        ComTest::TearDown();
    }
    void aggregate(const GUID& id) {
        ASSERT_EQ(library_->factory(id)->CreateInstance(&outer_, IID_IUnknown,
                                                        reinterpret_cast<void**>(&outer_.inner)),
                  S_OK);
        EXPECT_EQ(outer_.references, 1U) << "a part does not hold its whole";
        EXPECT_NE(outer_.inner, static_cast<IUnknown*>(&outer_));
    }
    void expectPart(const IID& id) {
        wchar_t text[39];
        StringFromGUID2(id, text, 39);
        SCOPED_TRACE(std::string(text, text + 38));
        ComPtr<IUnknown> part;
        ASSERT_EQ(outer_.QueryInterface(id, reinterpret_cast<void**>(part.GetAddressOf())), S_OK);
        EXPECT_EQ(outer_.references, 2U) << "a reference to a part is one to the whole";
        IUnknown* identity = nullptr;
        EXPECT_EQ(part->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&identity)), S_OK);
        EXPECT_EQ(identity, static_cast<IUnknown*>(&outer_));
        identity->Release();
        EXPECT_EQ(part->AddRef(), 3U);
        EXPECT_EQ(part->Release(), 2U);
        ComPtr<IDispatch> dispatch;
        EXPECT_EQ(part.As(&dispatch), S_OK) << "every interface leads to every other";
        IUnknown* unknown = nullptr;
        EXPECT_EQ(part->QueryInterface(IID_IClassFactory, reinterpret_cast<void**>(&unknown)), E_NOINTERFACE);
        EXPECT_EQ(unknown, nullptr);
    }
    template <std::size_t Count>
    void expectParts(const GUID& id, const IID (&interfaces)[Count]) {
        aggregate(id);
        for (const IID& part : interfaces) expectPart(part);
        IUnknown* own = nullptr;
        EXPECT_EQ(outer_.inner->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&own)), S_OK);
        EXPECT_EQ(own, outer_.inner) << "the part's own identity, which only the whole sees";
        EXPECT_EQ(own->Release(), 1U);
        EXPECT_EQ(library_->canUnload(), S_FALSE);
        outer_.letGo();
        EXPECT_EQ(library_->canUnload(), S_OK) << "a part goes with its whole";
    }

    std::unique_ptr<LoadedLibrary> library_;
    Outer outer_;
};

TEST_F(Aggregation, OfALogGivesAllItsInterfacesTheOutersIdentity) {
    expectParts(com::kLogClass, kLogInterfaces);
}

TEST_F(Aggregation, OfAControlGivesAllItsInterfacesTheOutersIdentity) {
    expectParts(com::kControlClass, kControlInterfaces);
}

TEST_F(Aggregation, IsOnlyToBeHadWithTheOwnIdentity) {
    for (const GUID& id : {com::kLogClass, com::kControlClass}) {
        void* object = &object;
        EXPECT_EQ(library_->factory(id)->CreateInstance(&outer_, IID_IDispatch, &object),
                  CLASS_E_NOAGGREGATION);
        EXPECT_EQ(object, nullptr);
        EXPECT_EQ(library_->factory(id)->CreateInstance(nullptr, IID_IClassFactory, &object), E_NOINTERFACE);
        EXPECT_EQ(object, nullptr);
        EXPECT_EQ(library_->factory(id)->CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
        EXPECT_EQ(library_->canUnload(), S_OK) << "a refused object leaves nothing behind";
    }
}

TEST_F(Aggregation, WorksThroughTheSystemsOwnCall) {
    IUnknown* inner = nullptr;
    ASSERT_EQ(CoCreateInstance(com::kControlClass, &outer_, CLSCTX_INPROC_SERVER, IID_IUnknown,
                               reinterpret_cast<void**>(&inner)),
              S_OK);
    inner->Release();
    EXPECT_EQ(CoCreateInstance(com::kControlClass, &outer_, CLSCTX_INPROC_SERVER, IID_IDispatch,
                               reinterpret_cast<void**>(&inner)),
              CLASS_E_NOAGGREGATION);
}

TEST_F(Aggregation, LeavesTheLogAndItsEventsAtWork) {
    aggregate(com::kLogClass);
    CountingSink sink;
    {
        ComPtr<IDispatch> log;
        ComPtr<IConnectionPointContainer> container;
        ComPtr<IConnectionPoint> point;
        ComPtr<IConnectionPointContainer> back;
        ASSERT_EQ(outer_.QueryInterface(IID_IDispatch, reinterpret_cast<void**>(log.GetAddressOf())), S_OK);
        ASSERT_EQ(log.As(&container), S_OK);
        ASSERT_EQ(container->FindConnectionPoint(com::kLogEvents, &point), S_OK);
        EXPECT_EQ(outer_.references, 4U) << "a connection point is a part as well";
        EXPECT_EQ(point->GetConnectionPointContainer(&back), S_OK);
        EXPECT_EQ(back.Get(), container.Get());
        DWORD cookie = 0;
        EXPECT_EQ(point->Advise(&sink, &cookie), S_OK);
        EXPECT_EQ(callByName(log.Get(), L"SeriesStart", DISPATCH_METHOD, {Variant(L"")}), S_OK);
        EXPECT_EQ(callByName(log.Get(), L"Add", DISPATCH_METHOD,
                             {Variant(L""), Variant(0L), Variant(L""), Variant(L"message")}),
                  S_OK);
    }
    EXPECT_EQ(sink.ids, std::vector<DISPID>{1});
    outer_.letGo();
    EXPECT_EQ(sink.references, 1U) << "the sinks go with the log";
}

TEST_F(Aggregation, LetsTheWholeGoInsideAnEventOfItsPart) {
    aggregate(com::kLogClass);
    CountingSink sink;
    IDispatch* log = nullptr;
    ASSERT_EQ(outer_.QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&log)), S_OK);
    {
        ComPtr<IConnectionPointContainer> container;
        ComPtr<IConnectionPoint> point;
        ASSERT_EQ(log->QueryInterface(IID_IConnectionPointContainer,
                                      reinterpret_cast<void**>(container.GetAddressOf())),
                  S_OK);
        ASSERT_EQ(container->FindConnectionPoint(com::kLogEvents, &point), S_OK);
        DWORD cookie = 0;
        EXPECT_EQ(point->Advise(&sink, &cookie), S_OK);
    }
    log->Release();
    sink.handler = [this] { outer_.letGo(); };
    Variant arguments[4] = {Variant(L"message"), Variant(L""), Variant(0L), Variant(L"")};
    DISPPARAMS parameters = {arguments, nullptr, 4, 0};
    EXPECT_EQ(log->Invoke(0x6003000e, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, nullptr,
                          nullptr, nullptr),
              S_OK);
    EXPECT_EQ(sink.ids, std::vector<DISPID>{1});
    EXPECT_EQ(sink.references, 1U);
}

TEST_F(Aggregation, KeepsTheControlsWindowForAsLongAsTheWhole) {
    aggregate(com::kControlClass);
    Variant handle;
    {
        ComPtr<IDispatch> control;
        ASSERT_EQ(outer_.QueryInterface(IID_IDispatch, reinterpret_cast<void**>(control.GetAddressOf())),
                  S_OK);
        EXPECT_EQ(callByName(control.Get(), L"hwnd", DISPATCH_PROPERTYGET, {}, &handle), S_OK);
    }
    const HWND window = reinterpret_cast<HWND>(static_cast<LONG_PTR>(handle.lVal));
    EXPECT_TRUE(IsWindow(window)) << "a control without references to its parts is still the whole's";
    outer_.letGo();
    EXPECT_FALSE(IsWindow(window));
}

} // namespace
} // namespace cvlog::tests
