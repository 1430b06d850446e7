#pragma once

#include "tests/windows/font_objects.h"
#include "tests/windows/in_place_site.h"

namespace cvlog::tests {

/// A control with three rows in its list.
class ControlViewTest : public InPlaceTest {
protected:
    void SetUp() override {
        InPlaceTest::SetUp();
        view_ = as<IViewObjectEx>(IID_IViewObjectEx);
        const ComPtr<IDispatch> lists = objectMember(control_.Get(), L"Controls");
        Variant found;
        ASSERT_EQ(callByName(lists.Get(), L"Item", DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                             {Variant(L"lvLog")}, &found),
                  S_OK);
        ASSERT_EQ(found.vt, VT_DISPATCH);
        items_ = objectMember(found.pdispVal, L"ListItems");
        for (const wchar_t* text : {L"first", L"second", L"third"}) addRow(text);
    }
    void TearDown() override {
        view_.Reset();
        items_.Reset();
        InPlaceTest::TearDown();
    }
    void addRow(const wchar_t* text) {
        Variant missing;
        missing.vt = VT_ERROR;
        missing.scode = DISP_E_PARAMNOTFOUND;
        Variant row;
        EXPECT_EQ(callByName(items_.Get(), L"Add", DISPATCH_METHOD, {missing, missing, Variant(text)}, &row),
                  S_OK);
    }

    ComPtr<IViewObjectEx> view_;
    ComPtr<IDispatch> items_;
};

} // namespace cvlog::tests
