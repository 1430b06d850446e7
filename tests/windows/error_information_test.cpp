// How a failing method tells its caller, and what becomes of the texts in which a host told of its own failure.

#include "tests/windows/invoke_call.h"
#include "tests/windows/script_host.h"
#include "tests/windows/text_spy.h"

#include <olectl.h>

#include <algorithm>

namespace cvlog::tests {
namespace {

constexpr HRESULT kHostError = static_cast<HRESULT>(0x800A0C57);
constexpr HRESULT kReadOnly = static_cast<HRESULT>(0x800A017E);

int lateFillIns = 0;

HRESULT WINAPI fillInLate(EXCEPINFO* info) {
    ++lateFillIns;
    info->scode = kHostError;
    info->bstrSource = TextSpy::instance().make(L"Late source");
    info->bstrDescription = TextSpy::instance().make(L"Late description");
    info->bstrHelpFile = TextSpy::instance().make(L"C:\\Late.hlp");
    return S_OK;
}

/// The thread's error information, which is gone afterwards.
struct ErrorInformation {
    bool there = false;
    std::wstring source;
    std::wstring description;

    static ErrorInformation take() {
        ErrorInformation taken;
        ComPtr<IErrorInfo> info;
        if (GetErrorInfo(0, &info) != S_OK) return taken;
        BSTR source = nullptr;
        BSTR description = nullptr;
        info->GetSource(&source);
        info->GetDescription(&description);
        taken = {true, source ? source : L"", description ? description : L""};
        SysFreeString(source);
        SysFreeString(description);
        return taken;
    }
};

class ErrorInformationOfMethods : public ComTest {
protected:
    void SetUp() override {
        ComTest::SetUp();
        log_ = create(L"CVLog3.CVLog");
        workspace_ = com::adopt<IDispatch>(makeWorkspace(project_.path()));
        ASSERT_TRUE(openDb(log_.Get(), workspace_.Get()));
        ASSERT_EQ(callByName(log_.Get(), L"SeriesStart", DISPATCH_METHOD, {Variant(L"verify")}), S_OK);
        SetErrorInfo(0, nullptr);
        TextSpy::instance().forget();
        lateFillIns = 0;
    }
    void TearDown() override {
        log_.Reset();
        workspace_.Reset();
        TextSpy::instance().forget();
        ComTest::TearDown();
    }
    void failTranslation(ScriptedDispatch::Failure failure) {
        static_cast<ScriptedDispatch*>(workspace_.Get())->fail(L"TranslateReturnCode", std::move(failure));
    }
    InvokeCall::Outcome add() {
        return InvokeCall{
            kAdd, DISPATCH_METHOD, {Variant(L"verify"), Variant(1L), Variant(L"O1"), Variant(L"m")}, {}}
            .on(log_.Get());
    }
    /// Without the place where an exception would be told.
    HRESULT addUnheard() {
        Variant arguments[] = {Variant(L"m"), Variant(L"O1"), Variant(1L), Variant(L"verify")};
        DISPPARAMS parameters = {arguments, nullptr, 4, 0};
        return log_->Invoke(kAdd, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, nullptr,
                            nullptr, nullptr);
    }
    static HRESULT failFully(EXCEPINFO* info) {
        info->scode = kHostError;
        info->bstrSource = TextSpy::instance().make(L"Host.Workspace");
        info->bstrDescription = TextSpy::instance().make(L"The code table is gone");
        info->bstrHelpFile = TextSpy::instance().make(L"C:\\Host.hlp");
        return DISP_E_EXCEPTION;
    }

    ProjectFolder project_;
    ComPtr<IDispatch> log_;
    ComPtr<IDispatch> workspace_;
};

TEST_F(ErrorInformationOfMethods, FillsInAllThatAnExceptionHas) {
    const ComPtr<IDispatch> control = create(L"CVLog3.CVLogControl");
    Variant handle(1L);
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS parameters = {&handle, &put, 1, 1};
    EXCEPINFO info;
    std::fill_n(reinterpret_cast<unsigned char*>(&info), sizeof info, static_cast<unsigned char>(0xCC));
    EXPECT_EQ(control->Invoke(DISPID_HWND, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT, &parameters,
                              nullptr, &info, nullptr),
              DISP_E_EXCEPTION);
    EXPECT_EQ(info.scode, kReadOnly);
    EXPECT_EQ(info.wCode, 0);
    EXPECT_EQ(info.wReserved, 0);
    EXPECT_STREQ(info.bstrSource, L"CVLog3");
    EXPECT_STREQ(info.bstrDescription, L"Set not supported at run time");
    EXPECT_EQ(info.bstrHelpFile, nullptr);
    EXPECT_EQ(info.dwHelpContext, 0U);
    EXPECT_EQ(info.pvReserved, nullptr);
    EXPECT_EQ(info.pfnDeferredFillIn, nullptr);
    SysFreeString(info.bstrSource);
    SysFreeString(info.bstrDescription);
    const ErrorInformation told = ErrorInformation::take();
    EXPECT_TRUE(told.there);
    EXPECT_EQ(told.source, L"CVLog3");
    EXPECT_EQ(told.description, L"Set not supported at run time");
    EXPECT_EQ(callByName(control.Get(), L"hwnd", DISPATCH_PROPERTYPUT, {Variant(1L)}), kReadOnly)
        << "a caller who wants no exception gets the error as the result";
}

TEST_F(ErrorInformationOfMethods, CarriesAHostsSourceAndDescription) {
    failTranslation(failFully);
    const auto outcome = add();
    EXPECT_EQ(outcome.result, DISP_E_EXCEPTION);
    EXPECT_EQ(outcome.code, kHostError);
    EXPECT_EQ(outcome.wordCode, 0);
    const ErrorInformation told = ErrorInformation::take();
    EXPECT_EQ(told.source, L"Host.Workspace");
    EXPECT_EQ(told.description, L"The code table is gone");
    EXPECT_EQ(addUnheard(), kHostError);
    EXPECT_EQ(ErrorInformation::take().description, L"The code table is gone");
}

TEST_F(ErrorInformationOfMethods, NamesTheArgumentThatDoesNotFit) {
    EXPECT_EQ(callByName(log_.Get(), L"SeriesFinish", DISPATCH_METHOD, {Variant(L"word")}),
              DISP_E_TYPEMISMATCH);
    const ErrorInformation told = ErrorInformation::take();
    EXPECT_NE(told.description.find(L"ReturnCode"), std::wstring::npos);
}

TEST_F(ErrorInformationOfMethods, IsNotLeftBySuccess) {
    EXPECT_EQ(add().result, S_OK);
    EXPECT_FALSE(ErrorInformation::take().there);
}

TEST_F(ErrorInformationOfMethods, NeverTurnsAHostsFailureIntoSuccess) {
    failTranslation([](EXCEPINFO* info) {
        info->scode = 5; // no failure by its bits
        return DISP_E_EXCEPTION;
    });
    const auto outcome = add();
    EXPECT_EQ(outcome.result, DISP_E_EXCEPTION);
    EXPECT_EQ(outcome.code, 5);
    EXPECT_EQ(addUnheard(), DISP_E_EXCEPTION);
}

TEST_F(ErrorInformationOfMethods, IsPromisedForTheInterfacesThatHaveIt) {
    ComPtr<ISupportErrorInfo> support;
    ASSERT_EQ(log_.As(&support), S_OK);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_IDispatch), S_OK);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(com::kLogInterface), S_OK);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(com::kControlInterface), S_FALSE);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_IConnectionPointContainer), S_FALSE);
}

TEST_F(ErrorInformationOfMethods, OfAHostIsWatchedByASpyThatSeesTexts) {
    TextSpy& spy = TextSpy::instance();
    const BSTR freed = spy.make(L"freed");
    const BSTR kept = spy.make(L"kept");
    SysFreeString(freed);
    EXPECT_EQ(spy.frees(), (std::vector<int>{1, 0}));
    SysFreeString(kept);
    EXPECT_EQ(spy.frees(), (std::vector<int>{1, 1}));
}

TEST_F(ErrorInformationOfMethods, OfAHostIsFreedExactlyOnce) {
    failTranslation(failFully);
    add();
    EXPECT_EQ(TextSpy::instance().frees(), (std::vector<int>{1, 1, 1}));
}

TEST_F(ErrorInformationOfMethods, OfAHostIsFreedAlsoWhenItsResultSaysNothingOfIt) {
    failTranslation([](EXCEPINFO* info) {
        failFully(info);
        return E_FAIL;
    });
    EXPECT_EQ(add().code, E_FAIL);
    EXPECT_EQ(TextSpy::instance().frees(), (std::vector<int>{1, 1, 1}));
}

TEST_F(ErrorInformationOfMethods, OfAHostIsFreedWhereTheFailureIsIgnored) {
    auto* options = ScriptedDispatch::make();
    options->member(L"selectSingleNode", [](ScriptedDispatch::Arguments&, VARIANT*) { return S_OK; })
        .fail(L"selectSingleNode", failFully);
    auto* workspace = makeWorkspace(project_.path());
    workspace->replace(L"UserOptions", [options](ScriptedDispatch::Arguments&, VARIANT* result) {
        giveObject(result, options);
        return S_OK;
    });
    EXPECT_TRUE(openDb(log_.Get(), workspace));
    const std::vector<int> frees = TextSpy::instance().frees();
    EXPECT_FALSE(frees.empty()) << "the failing member was asked";
    EXPECT_EQ(frees, std::vector<int>(frees.size(), 1));
    EXPECT_EQ(callByName(log_.Get(), L"CloseDB", DISPATCH_METHOD, {}), S_OK);
    workspace->Release();
    options->Release();
}

TEST_F(ErrorInformationOfMethods, ThatAHostFillsInLateIsAskedForOnceAndFreedOnce) {
    failTranslation([](EXCEPINFO* info) {
        info->pfnDeferredFillIn = fillInLate;
        return DISP_E_EXCEPTION;
    });
    const auto outcome = add();
    EXPECT_EQ(outcome.code, kHostError);
    EXPECT_EQ(outcome.source, L"Late source");
    EXPECT_EQ(outcome.description, L"Late description");
    EXPECT_EQ(lateFillIns, 1);
    EXPECT_EQ(TextSpy::instance().frees(), (std::vector<int>{1, 1, 1}));
}

TEST_F(ErrorInformationOfMethods, IsNotAskedForWhenAHostSucceeds) {
    static_cast<ScriptedDispatch*>(workspace_.Get())
        ->replace(L"TranslateReturnCode", [](ScriptedDispatch::Arguments&, VARIANT* result) {
            result->vt = VT_BSTR;
            result->bstrVal = TextSpy::instance().make(L"answer");
            return S_OK;
        });
    EXPECT_EQ(add().result, S_OK);
    const std::vector<int> frees = TextSpy::instance().frees();
    EXPECT_FALSE(frees.empty());
    EXPECT_EQ(frees, std::vector<int>(frees.size(), 1)) << "an answer is freed once as well";
}

} // namespace
} // namespace cvlog::tests
