// KeyDown takes its key by reference, whatever a language holds a number in.

#include "tests/windows/invoke_call.h"

namespace cvlog::tests {
namespace {

constexpr LONG kF1 = 112;
constexpr LONG kF10 = 121;

class KeyArguments : public ComTest {
protected:
    void SetUp() override {
        ComTest::SetUp();
        log_ = create(L"CVLog3.CVLog");
    }
    void TearDown() override {
        log_.Reset();
        ComTest::TearDown();
    }
    HRESULT keyDown(const Variant& code, const Variant& shift) {
        return InvokeCall{kKeyDown, DISPATCH_METHOD, {code, shift}, {}}.on(log_.Get()).result;
    }
    /// What becomes of a key code in a place of that type.
    template <class Number>
    Number after(VARTYPE type, Number code, SHORT shift) {
        SHORT held = shift;
        EXPECT_EQ(keyDown(byReference(type, &code), byReference(VT_I2, &held)), S_OK);
        EXPECT_EQ(held, shift);
        return code;
    }

    ComPtr<IDispatch> log_;
};

TEST_F(KeyArguments, BecomeZeroForTheKeysThatTheLogTakes) {
    for (SHORT shift = 0; shift < 8; ++shift) {
        EXPECT_EQ(after<SHORT>(VT_I2, kF1, shift), 0) << shift;
        EXPECT_EQ(after<SHORT>(VT_I2, kF10, shift), (shift & 1) ? 0 : kF10) << shift;
        for (const int other : {0, 1, 111, 113, 120, 122, -1})
            EXPECT_EQ(after(VT_I2, static_cast<SHORT>(other), shift), other) << shift;
    }
}

TEST_F(KeyArguments, AreWrittenBackInTheTypeOfTheirPlace) {
    EXPECT_EQ(after<LONG>(VT_I4, kF1, 0), 0);
    EXPECT_EQ(after<LONG>(VT_INT, kF10, 3), 0);
    EXPECT_EQ(after<USHORT>(VT_UI2, kF1, 0), 0);
    EXPECT_EQ(after<BYTE>(VT_UI1, kF1, 0), 0);
    EXPECT_EQ(after<ULONG>(VT_UI4, kF1, 0), 0U);
    EXPECT_EQ(after<LONGLONG>(VT_I8, kF1, 0), 0);
    EXPECT_EQ(after<FLOAT>(VT_R4, 112.0F, 0), 0.0F);
    EXPECT_EQ(after<DOUBLE>(VT_R8, 112.0, 0), 0.0);
    EXPECT_EQ(after<LONGLONG>(VT_CY, 1'120'000, 0), 0);
    EXPECT_EQ(after<DOUBLE>(VT_DATE, 112.0, 0), 0.0);
}

TEST_F(KeyArguments, AreWrittenBackIntoDecimalsThatKeepTheirVariantsType) {
    Variant decimal;
    ASSERT_EQ(VarDecFromI4(kF1, &decimal.decVal), S_OK);
    decimal.vt = VT_DECIMAL;
    EXPECT_EQ(keyDown(byReference(VT_DECIMAL, &decimal.decVal), Variant(0L)), S_OK);
    EXPECT_EQ(decimal.vt, VT_DECIMAL);
    LONG number = -1;
    EXPECT_EQ(VarI4FromDec(&decimal.decVal, &number), S_OK);
    EXPECT_EQ(number, 0);
}

TEST_F(KeyArguments, InTextsAreReplacedByTexts) {
    BSTR text = SysAllocString(L" 112 ");
    EXPECT_EQ(keyDown(byReference(VT_BSTR, &text), Variant(0L)), S_OK);
    EXPECT_STREQ(text, L"0");
    SysFreeString(text);
}

TEST_F(KeyArguments, InVariantsBecomeTheNumberOfTheParameter) {
    for (const Variant& held : {Variant(kF1), Variant(L"112"), ofDouble(112)}) {
        Variant place(held);
        EXPECT_EQ(keyDown(byReference(VT_VARIANT, &place), Variant(0L)), S_OK);
        EXPECT_EQ(place.vt, VT_I2);
        EXPECT_EQ(place.iVal, 0);
    }
    LONG number = kF1;
    Variant reference = byReference(VT_I4, &number);
    EXPECT_EQ(keyDown(byReference(VT_VARIANT, &reference), Variant(0L)), S_OK);
    EXPECT_EQ(number, 0) << "a reference in a variant leads to its own place";
    EXPECT_EQ(reference.vt, VT_I4 | VT_BYREF);
}

TEST_F(KeyArguments, OfKeysThatTheLogLeavesKeepTheirTypeAndTheirText) {
    BSTR text = SysAllocString(L" 65 ");
    const BSTR same = text;
    Variant code(65L);
    Variant shift(L"3");
    EXPECT_EQ(keyDown(byReference(VT_BSTR, &text), byReference(VT_VARIANT, &shift)), S_OK);
    EXPECT_EQ(keyDown(byReference(VT_VARIANT, &code), byReference(VT_VARIANT, &shift)), S_OK);
    EXPECT_EQ(text, same);
    EXPECT_STREQ(text, L" 65 ");
    EXPECT_EQ(code.vt, VT_I4);
    EXPECT_EQ(shift.vt, VT_BSTR) << "the shift state is never written";
    SysFreeString(text);
}

TEST_F(KeyArguments, ByValueOrNamedAreTaken) {
    EXPECT_EQ(keyDown(Variant(kF1), Variant(0L)), S_OK);
    SHORT code = kF10;
    const InvokeCall named{kKeyDown, DISPATCH_METHOD, {}, {{1, Variant(1L)}, {0, byReference(VT_I2, &code)}}};
    EXPECT_EQ(named.on(log_.Get()).result, S_OK);
    EXPECT_EQ(code, 0);
}

TEST_F(KeyArguments, BeyondSixteenBitsOverflow) {
    LONG code = 70'000;
    const auto outcome =
        InvokeCall{kKeyDown, DISPATCH_METHOD, {byReference(VT_I4, &code), Variant(0L)}, {}}.on(log_.Get());
    EXPECT_EQ(outcome.result, DISP_E_OVERFLOW);
    EXPECT_EQ(outcome.badArgument, 1U);
    EXPECT_EQ(code, 70'000);
}

} // namespace
} // namespace cvlog::tests
