// What hosts in all languages pass to Invoke, and what they may get wrong.

#include "tests/windows/invoke_call.h"
#include "tests/windows/script_host.h"

#include <algorithm>

namespace cvlog::tests {
namespace {

enum Parameter : DISPID { kMethodId, kReturnCode, kObjectId, kMessage, kErrorsFileName };

class InvokeArguments : public ComTest {
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

    InvokeCall::Outcome add(std::vector<Variant> positional,
                            std::vector<std::pair<DISPID, Variant>> named = {}) {
        return InvokeCall{kAdd, DISPATCH_METHOD, std::move(positional), std::move(named)}.on(log_.Get());
    }
    InvokeCall::Outcome addWithCode(const Variant& code) {
        return add({Variant(L"verify"), code, Variant(L""), Variant(L"message")});
    }
    Variant get(IDispatch* object, const wchar_t* member, std::initializer_list<Variant> arguments = {}) {
        Variant value;
        EXPECT_EQ(callByName(object, member, DISPATCH_METHOD | DISPATCH_PROPERTYGET, arguments, &value),
                  S_OK);
        return value;
    }
    /// Code, errors file and message of every record, as "code|file|message".
    std::vector<std::wstring> records() {
        const Variant database = get(log_.Get(), L"LogDB");
        const Variant rows =
            get(database.pdispVal, L"OpenRecordset", {Variant(L"select * from LogInfo order by RecordNum")});
        std::vector<std::wstring> found;
        while (get(rows.pdispVal, L"EOF").boolVal == VARIANT_FALSE) {
            const std::wstring message = field(rows.pdispVal, L"LogMessage");
            found.push_back(field(rows.pdispVal, L"ReturnMessage") + L"|" + field(rows.pdispVal, L"Errors") +
                            L"|" + message.substr(message.rfind(L' ') + 1));
            EXPECT_EQ(callByName(rows.pdispVal, L"MoveNext", DISPATCH_METHOD, {}), S_OK);
        }
        return found;
    }
    std::wstring field(IDispatch* rows, const wchar_t* name) {
        const Variant fields = get(rows, L"Fields", {Variant(name)});
        Variant value = get(fields.pdispVal, L"Value");
        if (value.vt == VT_NULL) return L"";
        EXPECT_EQ(VariantChangeType(&value, &value, 0, VT_BSTR), S_OK);
        return value.bstrVal ? value.bstrVal : L"";
    }
    void expectRecord(const std::wstring& expected) {
        const auto all = records();
        ASSERT_FALSE(all.empty());
        EXPECT_EQ(all.back(), expected);
    }

    ProjectFolder project_;
    ComPtr<IDispatch> log_;
    ComPtr<IDispatch> workspace_;
};

TEST_F(InvokeArguments, OfAddMayLeaveTheErrorsFileOut) {
    EXPECT_EQ(add({Variant(L"verify"), Variant(5L), Variant(L""), Variant(L"four")}).result, S_OK);
    expectRecord(L"5||four");
    EXPECT_EQ(add({Variant(L"verify"), Variant(6L), Variant(L""), Variant(L"five"), leftOut()}).result, S_OK);
    expectRecord(L"6||five");
    EXPECT_EQ(add({Variant(L"verify"), Variant(7L), Variant(L""), Variant(L"six"), Variant(L"f")}).result,
              S_OK);
    expectRecord(L"7|f|six");
    Variant held = leftOut();
    EXPECT_EQ(
        add({Variant(L""), Variant(8L), Variant(L""), Variant(L"seven"), byReference(VT_VARIANT, &held)})
            .result,
        S_OK);
    expectRecord(L"8||seven");
}

TEST_F(InvokeArguments, MayBeNamedInEveryOrder) {
    std::vector<std::pair<DISPID, Variant>> named = {{kMethodId, Variant(L"verify")},
                                                     {kReturnCode, Variant(3L)},
                                                     {kObjectId, Variant(L"")},
                                                     {kMessage, Variant(L"named")},
                                                     {kErrorsFileName, Variant(L"file")}};
    int order[] = {0, 1, 2, 3, 4};
    std::size_t orders = 0;
    do {
        std::vector<std::pair<DISPID, Variant>> shuffled;
        for (const int i : order) shuffled.push_back(named[static_cast<std::size_t>(i)]);
        ASSERT_EQ(add({}, shuffled).result, S_OK);
        ++orders;
    } while (std::next_permutation(std::begin(order), std::end(order)));
    EXPECT_EQ(records(), std::vector<std::wstring>(orders, L"3|file|named"));
    EXPECT_EQ(orders, 120U);
}

TEST_F(InvokeArguments, MayBePartlyNamed) {
    EXPECT_EQ(
        add({Variant(L"verify"), Variant(4L)}, {{kMessage, Variant(L"mixed")}, {kObjectId, Variant(L"")}})
            .result,
        S_OK);
    expectRecord(L"4||mixed");
    EXPECT_EQ(add({Variant(L"verify"), Variant(4L), Variant(L"")},
                  {{kErrorsFileName, Variant(L"file")}, {kMessage, Variant(L"late")}})
                  .result,
              S_OK);
    expectRecord(L"4|file|late");
}

TEST_F(InvokeArguments, OfOtherTypesAreConverted) {
    EXPECT_EQ(addWithCode(ofInt16(5)).result, S_OK);
    EXPECT_EQ(addWithCode(Variant(L"5")).result, S_OK);
    EXPECT_EQ(addWithCode(ofDouble(4.5)).result, S_OK);
    EXPECT_EQ(addWithCode(ofDouble(5.5)).result, S_OK);
    EXPECT_EQ(addWithCode(Variant()).result, S_OK);
    EXPECT_EQ(add({Variant(1L), Variant(2L), Variant(), Variant(3L)}).result, S_OK);
    EXPECT_EQ(records(), (std::vector<std::wstring>{L"5||message", L"5||message", L"4||message",
                                                    L"6||message", L"0||message", L"2||3"}))
        << "a half goes to the even neighbour; nothing is 0 and no text";
}

TEST_F(InvokeArguments, ThatDoNotFitAreRefusedWithTheirPlace) {
    for (const auto& [code, result] :
         {std::pair(ofDouble(1e10), DISP_E_OVERFLOW), std::pair(Variant(L"1e10"), DISP_E_OVERFLOW),
          std::pair(ofNull(), DISP_E_TYPEMISMATCH), std::pair(Variant(L"word"), DISP_E_TYPEMISMATCH),
          std::pair(byReference(VT_I4, nullptr), DISP_E_TYPEMISMATCH),
          std::pair(byReference(VT_VARIANT, nullptr), DISP_E_TYPEMISMATCH),
          std::pair(byReference(VT_ARRAY | VT_I4, nullptr), DISP_E_TYPEMISMATCH),
          std::pair(made(VT_ERROR, [](VARIANT& v) { v.scode = E_FAIL; }), DISP_E_TYPEMISMATCH)}) {
        const auto outcome = addWithCode(code);
        EXPECT_EQ(outcome.result, result) << "type " << code.vt;
        EXPECT_EQ(outcome.badArgument, 2U) << "type " << code.vt;
        EXPECT_TRUE(outcome.description.empty()) << "no exception of the member";
    }
    EXPECT_EQ(
        add({Variant(L"")}, {{kMessage, Variant(L"")}, {kReturnCode, ofNull()}, {kObjectId, Variant(L"")}})
            .badArgument,
        1U);
    EXPECT_TRUE(records().empty()) << "what is refused has not run";
}

TEST_F(InvokeArguments, ByReferenceAreFollowed) {
    LONG number = 9;
    BSTR text = SysAllocString(L"borrowed");
    Variant content(L"content");
    Variant inner = byReference(VT_BSTR, &text);
    EXPECT_EQ(add({byReference(VT_VARIANT, &content), byReference(VT_I4, &number),
                   byReference(VT_VARIANT, &inner), byReference(VT_BSTR, &text)})
                  .result,
              DISP_E_EXCEPTION)
        << "an object of that name is not there, which only the host can say";
    inner.vt = VT_EMPTY;
    EXPECT_EQ(add({byReference(VT_VARIANT, &content), byReference(VT_I4, &number),
                   byReference(VT_VARIANT, &inner), byReference(VT_BSTR, &text)})
                  .result,
              S_OK);
    expectRecord(L"9||borrowed");
    EXPECT_STREQ(text, L"borrowed");
    EXPECT_EQ(number, 9);
    SysFreeString(text);
}

TEST_F(InvokeArguments, ThatReferToThemselvesAreRefused) {
    Variant circle;
    circle.vt = VT_VARIANT | VT_BYREF;
    circle.pvarVal = &circle;
    EXPECT_EQ(addWithCode(circle).result, DISP_E_TYPEMISMATCH);
    circle.vt = VT_EMPTY;
}

TEST_F(InvokeArguments, OfOpenDbTakeTheWorkspaceInEveryWay) {
    IDispatch* reference = workspace_.Get();
    IUnknown* unknown = workspace_.Get();
    Variant held =
        made(VT_DISPATCH, [&](VARIANT& v) { v.pdispVal = workspace_.Get(), v.pdispVal->AddRef(); });
    const ULONG before = (workspace_->AddRef(), workspace_->Release());
    for (const Variant& way : {byReference(VT_DISPATCH, &reference), byReference(VT_VARIANT, &held), held,
                               byReference(VT_UNKNOWN, &unknown)}) {
        const auto outcome = InvokeCall{kOpenDb, DISPATCH_METHOD, {way}, {}}.on(log_.Get());
        EXPECT_EQ(outcome.result, S_OK) << "type " << way.vt;
        EXPECT_EQ(outcome.value.vt, VT_BOOL);
        EXPECT_EQ(outcome.value.boolVal, VARIANT_TRUE);
    }
    EXPECT_EQ(reference, workspace_.Get());
    EXPECT_EQ(held.pdispVal, workspace_.Get());
    EXPECT_EQ((workspace_->AddRef(), workspace_->Release()), before);
    const auto outcome = InvokeCall{kOpenDb, DISPATCH_METHOD, {Variant(1L)}, {}}.on(log_.Get());
    EXPECT_EQ(outcome.result, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(outcome.badArgument, 0U);
}

TEST_F(InvokeArguments, ThatMatchNoParameterAreRefused) {
    const Variant text(L"");
    EXPECT_EQ(add({text, Variant(1L), text, text, text, text}).result, DISP_E_BADPARAMCOUNT);
    const auto unknown = add({text, Variant(1L), text}, {{kMessage, text}, {99, text}});
    EXPECT_EQ(unknown.result, DISP_E_PARAMNOTFOUND);
    EXPECT_EQ(unknown.badArgument, 1U);
    const auto put = add({text, Variant(1L), text, text}, {{DISPID_PROPERTYPUT, text}});
    EXPECT_EQ(put.result, DISP_E_PARAMNOTFOUND) << "a method has no value that is put";
    EXPECT_EQ(add({text, Variant(1L), text}, {{kMessage, text}, {kMessage, text}}).result,
              DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(add({text, Variant(1L), text, text}, {{kMethodId, text}}).result, DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(add({text, Variant(1L), text}).result, DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(add({text, leftOut(), text, text}).result, DISP_E_PARAMNOTOPTIONAL);
    EXPECT_TRUE(records().empty());
}

TEST_F(InvokeArguments, NeedNoneOfTheAnswersPlaces) {
    const auto invoke = [this](DISPID id, WORD flags, DISPPARAMS* parameters) {
        return log_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, parameters, nullptr, nullptr, nullptr);
    };
    Variant variants[] = {Variant(L"message"), Variant(L""), Variant(1L), Variant(L"verify")};
    DISPPARAMS parameters = {variants, nullptr, 4, 0};
    EXPECT_EQ(invoke(kAdd, DISPATCH_METHOD, &parameters), S_OK);
    std::swap(static_cast<VARIANT&>(variants[0]), static_cast<VARIANT&>(variants[2]));
    EXPECT_EQ(invoke(kAdd, DISPATCH_METHOD, &parameters), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(invoke(0x60030008, DISPATCH_METHOD, nullptr), S_OK) << "no arguments at all";
    EXPECT_EQ(invoke(kAdd, DISPATCH_METHOD, nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(invoke(0x68030007, DISPATCH_PROPERTYGET, nullptr), S_OK) << "an answer nobody wants is freed";
    DISPID names[] = {kMessage};
    for (DISPPARAMS broken : {DISPPARAMS{nullptr, nullptr, 1, 0}, DISPPARAMS{variants, nullptr, 1, 1},
                              DISPPARAMS{variants, names, 0, 1}})
        EXPECT_EQ(invoke(kAdd, DISPATCH_METHOD, &broken), E_INVALIDARG);
}

TEST_F(InvokeArguments, OfAPropertyMayBePutByValueAndByReference) {
    constexpr DISPID kLeft = 0x68030004;
    const auto put = [this](WORD flags, const Variant& value) {
        return InvokeCall{kLeft, flags, {}, {{DISPID_PROPERTYPUT, value}}}.on(log_.Get());
    };
    for (const int flags :
         {DISPATCH_PROPERTYPUT, DISPATCH_PROPERTYPUTREF, DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF})
        EXPECT_EQ(put(static_cast<WORD>(flags), Variant(7L)).result, S_OK);
    const auto refused = put(DISPATCH_PROPERTYPUT, ofNull());
    EXPECT_EQ(refused.result, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(refused.badArgument, 0U);
    EXPECT_EQ((InvokeCall{kLeft, DISPATCH_PROPERTYPUT, {Variant(1L)}, {}}.on(log_.Get()).result), S_OK)
        << "clients that do not name the value are understood";
    const auto value = InvokeCall{kLeft, DISPATCH_PROPERTYGET, {}, {}}.on(log_.Get());
    EXPECT_EQ(value.value.vt, VT_R4);
    EXPECT_EQ(value.value.fltVal, 0.0F);
}

TEST_F(InvokeArguments, AreNotLookedAtWhenTheMemberIsNotOfTheKindThatIsAsked) {
    const auto ask = [this](DISPID id, WORD flags) {
        return InvokeCall{id, flags, {}, {}}.on(log_.Get()).result;
    };
    constexpr DISPID kDisplay = 0x60030008;
    constexpr DISPID kLogDb = 0x68030007;
    EXPECT_EQ(ask(kDisplay, DISPATCH_METHOD), S_OK);
    EXPECT_EQ(ask(kDisplay, DISPATCH_METHOD | DISPATCH_PROPERTYGET), S_OK);
    EXPECT_EQ(ask(kDisplay, DISPATCH_PROPERTYGET), DISP_E_MEMBERNOTFOUND) << "a look must not run a method";
    EXPECT_EQ(ask(kDisplay, DISPATCH_PROPERTYPUT), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(ask(kDisplay, 0), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(ask(kLogDb, DISPATCH_PROPERTYGET), S_OK);
    EXPECT_EQ(ask(kLogDb, DISPATCH_METHOD | DISPATCH_PROPERTYGET), S_OK);
    EXPECT_EQ(ask(kLogDb, DISPATCH_METHOD), S_OK) << "scripts call properties like methods";
    EXPECT_EQ(ask(kLogDb, DISPATCH_PROPERTYPUT), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(ask(kLogDb, DISPATCH_PROPERTYPUTREF), DISP_E_MEMBERNOTFOUND);
    for (const DISPID unknown :
         std::initializer_list<DISPID>{DISPID_VALUE, DISPID_UNKNOWN, DISPID_NEWENUM, 0x60030009, 1})
        EXPECT_EQ(ask(unknown, DISPATCH_METHOD | DISPATCH_PROPERTYGET), DISP_E_MEMBERNOTFOUND);
    DISPPARAMS none = {};
    EXPECT_EQ(log_->Invoke(kDisplay, IID_IDispatch, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
              DISP_E_UNKNOWNINTERFACE);
}

class NamesOfMembers : public InvokeArguments {
protected:
    HRESULT idsOf(std::vector<const wchar_t*> names, std::vector<DISPID>& ids) {
        ids.assign(names.size(), 4711);
        return log_->GetIDsOfNames(IID_NULL, const_cast<LPOLESTR*>(names.data()),
                                   static_cast<UINT>(names.size()), LOCALE_USER_DEFAULT, ids.data());
    }
    using Ids = std::vector<DISPID>;
};

TEST_F(NamesOfMembers, AreFoundWithThoseOfTheirParameters) {
    Ids ids;
    EXPECT_EQ(idsOf({L"ADD", L"errorsfilename", L"MethodID", L"Message"}, ids), S_OK);
    EXPECT_EQ(ids, (Ids{kAdd, kErrorsFileName, kMethodId, kMessage}));
    EXPECT_EQ(idsOf({L"KeyDown", L"Shift", L"KeyCode"}, ids), S_OK);
    EXPECT_EQ(ids, (Ids{kKeyDown, 1, 0}));
}

TEST_F(NamesOfMembers, ThatAreUnknownAreMarkedAndTheOthersFoundAllTheSame) {
    Ids ids;
    EXPECT_EQ(idsOf({L"Add", L"Nothing", L"Message"}, ids), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(ids, (Ids{kAdd, DISPID_UNKNOWN, kMessage}));
    EXPECT_EQ(idsOf({L"Nothing", L"Message"}, ids), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(ids, (Ids{DISPID_UNKNOWN, DISPID_UNKNOWN}));
    EXPECT_EQ(idsOf({L""}, ids), DISP_E_UNKNOWNNAME);
}

TEST_F(NamesOfMembers, AreNotLookedForWithoutAProperQuestion) {
    Ids ids;
    EXPECT_EQ(idsOf({nullptr}, ids), E_INVALIDARG);
    EXPECT_EQ(idsOf({L"Add", nullptr}, ids), E_INVALIDARG);
    EXPECT_EQ(log_->GetIDsOfNames(IID_NULL, nullptr, 1, 0, ids.data()), E_INVALIDARG);
    LPOLESTR name = const_cast<LPOLESTR>(L"Add");
    EXPECT_EQ(log_->GetIDsOfNames(IID_NULL, &name, 1, 0, nullptr), E_INVALIDARG);
    EXPECT_EQ(log_->GetIDsOfNames(IID_NULL, &name, 0, 0, ids.data()), E_INVALIDARG);
    EXPECT_EQ(log_->GetIDsOfNames(IID_IDispatch, &name, 1, 0, ids.data()), DISP_E_UNKNOWNINTERFACE);
}

} // namespace
} // namespace cvlog::tests
