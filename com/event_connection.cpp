#include "com/event_connection.h"

#include "automation/error.h"
#include "base/failure.h"
#include "com/foreign_object.h"
#include "com/heap_object.h"
#include "com/variants.h"

#include <ocidl.h>

#include <vector>

namespace cvlog::com {

namespace {

using automation::EventSink;
using automation::Value;

/// Our ear at a foreign object: an IDispatch that also answers to the events' own interface.
class SinkDispatch final : public HeapObject<IDispatch> {
public:
    SinkDispatch(std::shared_ptr<EventSink> sink, const IID& events)
        : sink_(std::move(sink)), events_(events) {}

    STDMETHODIMP GetTypeInfoCount(UINT* count) override { return count ? (*count = 0, S_OK) : E_POINTER; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return DISP_E_BADINDEX; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return DISP_E_UNKNOWNNAME; }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*, EXCEPINFO*,
                        UINT*) override {
        base::ignoring([&] { forward(id, parameters); });
        return S_OK;
    }

    /// Nothing is heard any more, also from a source that goes on raising after it was told to stop.
    void detach() noexcept { sink_.reset(); }

private:
    void forward(DISPID id, DISPPARAMS* parameters) {
        std::vector<Value> arguments;
        for (UINT i = parameters ? parameters->cArgs : 0; i > 0; --i)
            arguments.push_back(fromVariant(parameters->rgvarg[i - 1]));
        const std::shared_ptr<EventSink> keep = sink_;
        if (keep) keep->onEvent(id, arguments);
    }

    bool answersTo(REFIID id) const noexcept override { return id == IID_IDispatch || id == events_; }

    std::shared_ptr<EventSink> sink_;
    IID events_;
};

using EventConnection = SinkConnection<SinkDispatch, automation::Connection>;

// The default source: what the class says, else the first connection point there is.
ComPtr<IConnectionPoint> defaultPoint(IDispatch* source) {
    ComPtr<IConnectionPointContainer> container;
    ComPtr<IConnectionPoint> point;
    if (FAILED(source->QueryInterface(IID_IConnectionPointContainer, &container))) return nullptr;
    ComPtr<IProvideClassInfo2> classInfo;
    GUID id = {};
    if (SUCCEEDED(source->QueryInterface(IID_IProvideClassInfo2, &classInfo)) &&
        SUCCEEDED(classInfo->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &id)) &&
        SUCCEEDED(container->FindConnectionPoint(id, &point)))
        return point;
    if (SUCCEEDED(container->FindConnectionPoint(IID_IDispatch, &point))) return point;
    ComPtr<IEnumConnectionPoints> all;
    ULONG got = 0;
    if (SUCCEEDED(container->EnumConnectionPoints(&all)) && all->Next(1, &point, &got) == S_OK) return point;
    return nullptr;
}

/// The arguments of an event: last one first, key codes by reference in the type that handlers declare, everything
/// else by value.
class EventArguments {
public:
    explicit EventArguments(std::span<const Value> values) : values_(values.size()), given_(values.size()) {
        for (VARIANT& value : values_) VariantInit(&value);
        for (std::size_t i = 0; i < values.size(); ++i) fill(values[i], values_.size() - 1 - i);
    }
    ~EventArguments() {
        for (VARIANT& value : values_) VariantClear(&value);
    }
    EventArguments(const EventArguments&) = delete;
    EventArguments& operator=(const EventArguments&) = delete;

    DISPPARAMS parameters() { return {given_.data(), nullptr, static_cast<UINT>(given_.size()), 0}; }
    Value value(std::size_t index) const { return fromVariant(values_[values_.size() - 1 - index]); }

private:
    void fill(const Value& value, std::size_t place) {
        toVariant(value, &values_[place]);
        given_[place] = values_[place]; // shares what the value owns; only the value is cleared
        if (values_[place].vt != VT_I2) return;
        given_[place].vt = VT_I2 | VT_BYREF;
        given_[place].piVal = &values_[place].iVal;
    }

    std::vector<VARIANT> values_;
    std::vector<VARIANT> given_;
};

/// A host's ear at one of our objects.
class HostSink final : public EventSink {
public:
    explicit HostSink(IDispatch* sink) : sink_(sink) {}

    void onEvent(std::int32_t id, std::span<Value> arguments) override {
        EventArguments given(arguments);
        DISPPARAMS parameters = given.parameters();
        const ComPtr<IDispatch> keep(sink_);
        keep->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, nullptr, nullptr,
                     nullptr);
        for (std::size_t i = 0; i < arguments.size(); ++i)
            base::ignoring([&] { arguments[i] = given.value(i); });
    }

    IUnknown* host() const noexcept { return sink_.Get(); }

private:
    ComPtr<IDispatch> sink_;
};

} // namespace

std::unique_ptr<automation::Connection> connectEvents(IDispatch* source, std::shared_ptr<EventSink> sink) {
    const ComPtr<IConnectionPoint> point = defaultPoint(source);
    if (!point)
        throw automation::AutomationError(automation::code::kNoConnection, u"The object raises no events");
    IID events = IID_IDispatch;
    point->GetConnectionInterface(&events);
    const ComPtr<SinkDispatch> ear = adopt(new SinkDispatch(std::move(sink), events));
    DWORD cookie = 0;
    const HRESULT result = point->Advise(ear.Get(), &cookie);
    if (FAILED(result)) throw automation::AutomationError(result, u"The object refuses the connection");
    return std::make_unique<EventConnection>(point, ear, cookie);
}

std::shared_ptr<EventSink> makeHostSink(IDispatch* sink) { return std::make_shared<HostSink>(sink); }

IUnknown* hostSinkOf(const EventSink& sink) noexcept {
    const auto* host = dynamic_cast<const HostSink*>(&sink);
    return host ? host->host() : nullptr;
}

} // namespace cvlog::com
