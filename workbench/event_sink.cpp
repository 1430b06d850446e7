#include "workbench/event_sink.h"

#include "workbench/failure.h"

namespace workbench {

namespace {

/// What the source calls: answers to the event interface and passes each event on.
class EventSink : public ComObject<IDispatch> {
public:
    EventSink(REFIID events, EventConnection::Handler handler)
        : events_(events), handler_(std::move(handler)) {}

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return DISP_E_UNKNOWNNAME; // events come by number
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*,
                                     EXCEPINFO*, UINT*) override {
        try {
            handler_(id, Arguments(*parameters));
        } catch (const Failure& failure) {
            return failure.code();
        } catch (const std::exception&) {
            return E_OUTOFMEMORY;
        }
        return S_OK;
    }

private:
    void* findInterface(REFIID iid) override {
        return iid == events_ ? static_cast<IDispatch*>(this) : ComObject::findInterface(iid);
    }

    IID events_;
    EventConnection::Handler handler_;
};

} // namespace

EventConnection::EventConnection(IUnknown* source, REFIID events, Handler handler) {
    ComPtr<IConnectionPointContainer> container;
    check(source->QueryInterface(IID_IConnectionPointContainer,
                                 reinterpret_cast<void**>(container.GetAddressOf())),
          L"Asking for events");
    check(container->FindConnectionPoint(events, point_.GetAddressOf()), L"Finding the events");
    check(point_->Advise(makeObject<EventSink>(events, std::move(handler)).Get(), &cookie_),
          L"Connecting to the events");
}

EventConnection::~EventConnection() { point_->Unadvise(cookie_); }

} // namespace workbench
