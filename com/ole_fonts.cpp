#include "com/ole_fonts.h"

#include "automation/error.h"
#include "base/failure.h"
#include "com/foreign_object.h"
#include "com/heap_object.h"
#include "com/variants.h"

#include <ocidl.h>
#include <olectl.h>

#include <cmath>

namespace cvlog::com {

namespace {

constexpr double kCurrencyUnits = 10'000; // a currency value counts ten-thousandths

/// Our ear at a font object.
class FontSink final : public HeapObject<IPropertyNotifySink> {
public:
    explicit FontSink(std::function<void()> changed) : changed_(std::move(changed)) {}

    STDMETHODIMP OnChanged(DISPID) override {
        const auto handler = changed_; // the call may end this connection
        if (handler) base::ignoring(handler);
        return S_OK;
    }
    STDMETHODIMP OnRequestEdit(DISPID) override { return S_OK; }

    /// Nothing is heard any more, also from a font that goes on telling after it was told to stop.
    void detach() noexcept { changed_ = nullptr; }

private:
    std::function<void()> changed_;
};

using FontConnection = SinkConnection<FontSink, automation::Connection>;

} // namespace

automation::ObjectRef OleFonts::make(const base::Font& font) {
    std::u16string face = font.face;
    FONTDESC description = {};
    description.cbSizeofstruct = sizeof description;
    description.lpstrName = const_cast<LPOLESTR>(wide(face.c_str()));
    description.cySize.int64 = std::llround(static_cast<double>(font.points) * kCurrencyUnits);
    description.sWeight = static_cast<SHORT>(font.weight);
    description.sCharset = static_cast<SHORT>(font.charset);
    description.fItalic = font.italic ? TRUE : FALSE;
    description.fUnderline = font.underline ? TRUE : FALSE;
    description.fStrikethrough = font.strikethrough ? TRUE : FALSE;
    ComPtr<IDispatch> made;
    const HRESULT result = OleCreateFontIndirect(&description, IID_IFontDisp, &made);
    if (FAILED(result)) throw automation::AutomationError(result, u"The system makes no font object");
    return std::make_shared<ForeignObject>(made.Get());
}

std::unique_ptr<automation::Connection> OleFonts::watch(const automation::ObjectRef& font,
                                                        std::function<void()> changed) {
    const auto* foreign = dynamic_cast<const ForeignObject*>(font.get());
    if (!foreign) return nullptr;
    ComPtr<IConnectionPointContainer> container;
    ComPtr<IConnectionPoint> point;
    if (FAILED(foreign->dispatch()->QueryInterface(IID_IConnectionPointContainer, &container)) ||
        FAILED(container->FindConnectionPoint(IID_IPropertyNotifySink, &point)))
        return nullptr;
    const ComPtr<FontSink> ear = adopt(new FontSink(std::move(changed)));
    DWORD cookie = 0;
    if (FAILED(point->Advise(ear.Get(), &cookie))) return nullptr;
    return std::make_unique<FontConnection>(point, ear, cookie);
}

} // namespace cvlog::com
