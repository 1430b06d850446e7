// What assistive technology holds of the component keeps the library loaded, and nothing else alive.

#include "tests/windows/com_test.h"
#include "tests/windows/loaded_library.h"

#include <oleacc.h>

namespace cvlog::tests {
namespace {

class AccessibleLifetime : public ComTest {};

ComPtr<IAccessible> accessibleOf(IDispatch* control) {
    Variant window;
    EXPECT_EQ(callByName(control, L"hwnd", DISPATCH_PROPERTYGET, {}, &window), S_OK);
    ComPtr<IAccessible> object;
    EXPECT_EQ(AccessibleObjectFromWindow(reinterpret_cast<HWND>(static_cast<LONG_PTR>(window.lVal)),
                                         static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                         reinterpret_cast<void**>(object.GetAddressOf())),
              S_OK);
    return object;
}

TEST_F(AccessibleLifetime, AnObjectThatOutlivesTheListKeepsOnlyTheCode) {
    const LoadedLibrary library;
    ASSERT_TRUE(library.loaded());
    ComPtr<IAccessible> held;
    {
        const ComPtr<IDispatch> control = library.create(com::kControlClass);
        held = accessibleOf(control.Get());
        ASSERT_TRUE(held);
        const Variant self(static_cast<LONG>(CHILDID_SELF));
        BSTR name = nullptr;
        EXPECT_EQ(held->get_accName(self, &name), S_OK);
        EXPECT_STREQ(name, L"Activity Log");
        SysFreeString(name);
    }
    EXPECT_EQ(library.canUnload(), S_FALSE);
    LONG count = 0;
    EXPECT_EQ(held->get_accChildCount(&count), CO_E_OBJNOTCONNECTED);
    held.Reset();
    EXPECT_EQ(library.canUnload(), S_OK);
}

TEST_F(AccessibleLifetime, AListThatWasAskedGoesLikeAnyOther) {
    const LoadedLibrary library;
    ASSERT_TRUE(library.loaded());
    {
        const ComPtr<IDispatch> control = library.create(com::kControlClass);
        EXPECT_TRUE(accessibleOf(control.Get()));
        EXPECT_TRUE(accessibleOf(control.Get())) << "once more";
    }
    EXPECT_EQ(library.canUnload(), S_OK);
}

} // namespace
} // namespace cvlog::tests
