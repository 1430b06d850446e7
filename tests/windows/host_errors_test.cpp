// A failing host: its error reaches the caller of the log as the host gave it.

#include "tests/windows/com_test.h"
#include "tests/windows/script_host.h"

#include <functional>

namespace cvlog::tests {
namespace {

constexpr HRESULT kRaised = static_cast<HRESULT>(0x800A0C57);

struct Reported {
    HRESULT result = S_OK;
    HRESULT code = S_OK;
    std::wstring source;
    std::wstring description;
};

HRESULT WINAPI fillInAfterwards(EXCEPINFO* info) {
    info->scode = kRaised;
    info->bstrDescription = SysAllocString(L"Filled in late");
    return S_OK;
}

class HostErrors : public ComTest {
protected:
    void SetUp() override {
        ComTest::SetUp();
        log_ = create(L"CVLog3.CVLog");
        workspace_ = com::adopt<IDispatch>(makeWorkspace(project_.path()));
        ASSERT_TRUE(openDb(log_.Get(), workspace_.Get()));
        ASSERT_EQ(callByName(log_.Get(), L"SeriesStart", DISPATCH_METHOD, {Variant(L"verify")}), S_OK);
    }
    void TearDown() override {
        log_.Reset();
        workspace_.Reset();
        ComTest::TearDown();
    }

    /// Adds an entry while the workspace's `TranslateReturnCode` fails.
    Reported addWhileFailing(ScriptedDispatch::Failure failure) {
        static_cast<ScriptedDispatch*>(workspace_.Get())->fail(L"TranslateReturnCode", std::move(failure));
        Variant arguments[] = {Variant(L"message"), Variant(L"O1"), Variant(1L), Variant(L"verify")};
        DISPPARAMS parameters = {arguments, nullptr, 4, 0};
        EXCEPINFO info = {};
        Reported reported;
        reported.result = log_->Invoke(0x6003000e, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                                       &parameters, nullptr, &info, nullptr);
        reported.code = info.scode;
        reported.source.assign(info.bstrSource ? info.bstrSource : L"");
        reported.description.assign(info.bstrDescription ? info.bstrDescription : L"");
        SysFreeString(info.bstrSource);
        SysFreeString(info.bstrDescription);
        SysFreeString(info.bstrHelpFile);
        return reported;
    }

    bool hasRecords() {
        Variant database;
        Variant rows;
        Variant atEnd;
        EXPECT_EQ(callByName(log_.Get(), L"LogDB", DISPATCH_PROPERTYGET, {}, &database), S_OK);
        EXPECT_EQ(callByName(database.pdispVal, L"OpenRecordset", DISPATCH_METHOD,
                             {Variant(L"select * from LogInfo")}, &rows),
                  S_OK);
        EXPECT_EQ(callByName(rows.pdispVal, L"EOF", DISPATCH_PROPERTYGET, {}, &atEnd), S_OK);
        return atEnd.boolVal == VARIANT_FALSE;
    }

    ProjectFolder project_;
    ComPtr<IDispatch> log_;
    ComPtr<IDispatch> workspace_;
};

TEST_F(HostErrors, KeepTheirCodeSourceAndDescription) {
    const Reported reported = addWhileFailing([](EXCEPINFO* info) {
        info->scode = kRaised;
        info->bstrSource = SysAllocString(L"Host.Workspace");
        info->bstrDescription = SysAllocString(L"The code table is gone");
        return DISP_E_EXCEPTION;
    });
    EXPECT_EQ(reported.result, DISP_E_EXCEPTION);
    EXPECT_EQ(reported.code, kRaised);
    EXPECT_EQ(reported.source, L"Host.Workspace");
    EXPECT_EQ(reported.description, L"The code table is gone");
    EXPECT_FALSE(hasRecords()) << "an entry that fails before its record leaves no trace";
}

TEST_F(HostErrors, ThatAreFilledInLateAreAskedFor) {
    const Reported reported = addWhileFailing([](EXCEPINFO* info) {
        info->pfnDeferredFillIn = fillInAfterwards;
        return DISP_E_EXCEPTION;
    });
    EXPECT_EQ(reported.code, kRaised);
    EXPECT_EQ(reported.description, L"Filled in late");
}

TEST_F(HostErrors, OfSixteenBitsAreRunTimeErrors) {
    const Reported reported = addWhileFailing([](EXCEPINFO* info) {
        info->wCode = 1004;
        return DISP_E_EXCEPTION;
    });
    EXPECT_EQ(reported.code, static_cast<HRESULT>(0x800A03EC));
}

TEST_F(HostErrors, WithoutInformationKeepTheirResult) {
    EXPECT_EQ(addWhileFailing([](EXCEPINFO*) { return RPC_E_DISCONNECTED; }).code, RPC_E_DISCONNECTED);
}

TEST_F(HostErrors, DoNotComeFromAnAnswerByReferenceWhichIsFollowed) {
    BSTR held = SysAllocString(L"by reference");
    auto* workspace = static_cast<ScriptedDispatch*>(workspace_.Get());
    workspace->replace(L"TranslateReturnCode", [&held](ScriptedDispatch::Arguments&, VARIANT* result) {
        result->vt = VT_BSTR | VT_BYREF;
        result->pbstrVal = &held;
        return S_OK;
    });
    EXPECT_EQ(callByName(log_.Get(), L"Add", DISPATCH_METHOD,
                         {Variant(L"verify"), Variant(1L), Variant(L"O1"), Variant(L"message")}),
              S_OK);
    EXPECT_TRUE(hasRecords());
    EXPECT_STREQ(held, L"by reference") << "what a host lends stays the host's";
    SysFreeString(held);
}

TEST_F(HostErrors, OfAMissingMemberSayWhichMemberIsMissing) {
    ComPtr<IDispatch> bare = com::adopt<IDispatch>(ScriptedDispatch::make());
    IDispatch* reference = bare.Get();
    Variant argument;
    argument.vt = VT_DISPATCH | VT_BYREF;
    argument.ppdispVal = &reference;
    DISPPARAMS parameters = {&argument, nullptr, 1, 0};
    EXCEPINFO info = {};
    EXPECT_EQ(log_->Invoke(0x60030011, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, nullptr,
                           &info, nullptr),
              DISP_E_EXCEPTION);
    argument.vt = VT_EMPTY;
    EXPECT_EQ(info.scode, DISP_E_UNKNOWNNAME);
    EXPECT_NE(std::wstring(info.bstrDescription).find(L"UserOptions"), std::wstring::npos);
    SysFreeString(info.bstrSource);
    SysFreeString(info.bstrDescription);
}

} // namespace
} // namespace cvlog::tests
