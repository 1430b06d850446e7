// The control as containers store it: bags of every kind, streams, storages.

#include "tests/windows/control_site.h"
#include "tests/windows/font_objects.h"
#include "tests/windows/property_bags.h"
#include "tests/windows/script_host.h"

#include <map>
#include <string>
#include <vector>

namespace cvlog::tests {
namespace {

const std::vector<std::wstring> kAllNames = {L"BackColor", L"ForeColor", L"Enabled", L"Font"};

class ControlPersistenceOverCom : public ComTest {
protected:
    void SetUp() override {
        ComTest::SetUp();
        control_ = create(L"CVLog3.CVLogControl");
        ASSERT_NE(control_.Get(), nullptr);
    }
    void TearDown() override {
        control_.Reset();
        EXPECT_EQ(bag_.references, 1U) << "a reference to the bag is left";
        bag_.values.clear();
        ComTest::TearDown();
    }
    template <class Interface>
    ComPtr<Interface> as(REFIID id) {
        ComPtr<Interface> face;
        EXPECT_EQ(control_->QueryInterface(id, &face), S_OK);
        return face;
    }
    ComPtr<IPersistPropertyBag> bagFace() { return as<IPersistPropertyBag>(IID_IPersistPropertyBag); }
    ComPtr<IPersistStreamInit> streamFace() { return as<IPersistStreamInit>(IID_IPersistStreamInit); }
    DWORD colour(const wchar_t* name) { return static_cast<DWORD>(numberMember(control_.Get(), name)); }
    void changeAll() {
        putMember(control_.Get(), L"BackColor", Variant(0x102030));
        putMember(control_.Get(), L"ForeColor", Variant(static_cast<LONG>(0x80000011)));
        putMember(control_.Get(), L"Enabled", truth(false));
        putMember(control_.Get(), L"Font", asVariant(makeSystemFont(L"Tahoma", 20).Get()));
    }
    void expectChanged() {
        EXPECT_EQ(colour(L"BackColor"), 0x102030U);
        EXPECT_EQ(colour(L"ForeColor"), 0x80000011U);
        EXPECT_EQ(numberMember(control_.Get(), L"Enabled"), 0);
        EXPECT_EQ(numberMember(objectMember(control_.Get(), L"Font").Get(), L"Size"), 20);
    }
    HRESULT loadOne(const wchar_t* name, const VARIANT& value) {
        Bag bag;
        VariantCopy(&bag.values[name], const_cast<VARIANT*>(&value));
        const HRESULT result = bagFace()->Load(&bag, nullptr);
        EXPECT_EQ(bag.references, 1U);
        return result;
    }
    bool isDirty() { return streamFace()->IsDirty() == S_OK; }

    ComPtr<IDispatch> control_;
    Bag bag_;
};

TEST_F(ControlPersistenceOverCom, ABagWithoutValuesIsReadInOrderAndGivesTheDefaults) {
    changeAll();
    EXPECT_EQ(bagFace()->Load(&bag_, nullptr), S_OK);
    EXPECT_EQ(bag_.asked, kAllNames);
    EXPECT_EQ(colour(L"BackColor"), 0x80000005U);
    EXPECT_EQ(colour(L"ForeColor"), 0x80000008U);
    EXPECT_NE(numberMember(control_.Get(), L"Enabled"), 0);
    EXPECT_EQ(numberMember(objectMember(control_.Get(), L"Font").Get(), L"Size"), 8);
}

TEST_F(ControlPersistenceOverCom, ABagWithoutValuesGivesTheContainersFont) {
    ControlSite site;
    site.set(DISPID_AMBIENT_FONT, asVariant(makeSystemFont(L"Tahoma", 14).Get()));
    site.attach(control_.Get());
    EXPECT_EQ(bagFace()->Load(&bag_, nullptr), S_OK);
    EXPECT_EQ(numberMember(objectMember(control_.Get(), L"Font").Get(), L"Size"), 14);
    EXPECT_EQ(bagFace()->Save(&bag_, TRUE, TRUE), S_OK);
    EXPECT_TRUE(bag_.written.empty()) << "the container's font is not the control's to store";
    site.attach(control_.Get(), false);
    EXPECT_EQ(site.references, 1U);
}

TEST_F(ControlPersistenceOverCom, InitNewAppliesTheDefaultsAndStoresNothing) {
    changeAll();
    EXPECT_EQ(bagFace()->InitNew(), S_OK);
    EXPECT_EQ(colour(L"BackColor"), 0x80000005U);
    EXPECT_FALSE(isDirty());
    EXPECT_EQ(bagFace()->Save(&bag_, FALSE, TRUE), S_OK);
    EXPECT_TRUE(bag_.written.empty());
}

TEST_F(ControlPersistenceOverCom, ABagIsWrittenInOrderAndGivesBackWhatItGot) {
    changeAll();
    const ComPtr<IDispatch> font = objectMember(control_.Get(), L"Font");
    EXPECT_EQ(bagFace()->Save(&bag_, TRUE, TRUE), S_OK);
    EXPECT_EQ(bag_.written, kAllNames);
    EXPECT_EQ(bag_.values[L"BackColor"].vt, VT_I4);
    EXPECT_EQ(bag_.values[L"Enabled"].vt, VT_BOOL);
    ASSERT_EQ(bag_.values[L"Font"].vt, VT_DISPATCH);
    EXPECT_EQ(bag_.values[L"Font"].pdispVal, font.Get());
    control_ = create(L"CVLog3.CVLogControl");
    EXPECT_EQ(bagFace()->Load(&bag_, nullptr), S_OK);
    expectChanged();
    EXPECT_EQ(objectMember(control_.Get(), L"Font").Get(), font.Get());
}

TEST_F(ControlPersistenceOverCom, ABagThatFailsWhileItIsWrittenKeepsTheControlUnsaved) {
    changeAll();
    bag_.failures[L"Enabled"] = E_OUTOFMEMORY;
    EXPECT_EQ(bagFace()->Save(&bag_, TRUE, TRUE), E_OUTOFMEMORY);
    EXPECT_TRUE(isDirty());
}

TEST_F(ControlPersistenceOverCom, WhatABagFailsWithReachesTheContainer) {
    changeAll();
    for (const std::wstring& name : kAllNames) {
        bag_.failures = {{name, E_FAIL}};
        EXPECT_EQ(bagFace()->Load(&bag_, nullptr), E_FAIL);
        bag_.failures = {{name, E_OUTOFMEMORY}};
        EXPECT_EQ(bagFace()->Load(&bag_, nullptr), E_OUTOFMEMORY);
    }
    expectChanged();
}

TEST_F(ControlPersistenceOverCom, OddValuesAreErrorsAndLeaveTheControlAsItWas) {
    changeAll();
    const ComPtr<IDispatch> script = com::adopt<IDispatch>(ScriptedDispatch::make());
    VARIANT odd[5] = {};
    odd[1].vt = VT_NULL;
    odd[2].vt = VT_UNKNOWN;
    odd[3].vt = VT_ARRAY | VT_I4;
    odd[3].parray = SafeArrayCreateVector(VT_I4, 0, 3);
    odd[4].vt = VT_UNKNOWN;
    odd[4].punkVal = script.Get();
    for (const std::wstring& name : kAllNames) {
        for (const VARIANT& value : odd) EXPECT_TRUE(FAILED(loadOne(name.c_str(), value))) << value.vt;
        EXPECT_EQ(loadOne(name.c_str(), Variant(L"abc")), DISP_E_TYPEMISMATCH);
    }
    Variant large;
    large.vt = VT_R8;
    large.dblVal = 1e10;
    EXPECT_EQ(loadOne(L"BackColor", large), DISP_E_OVERFLOW);
    EXPECT_EQ(loadOne(L"Font", Variant(12)), DISP_E_TYPEMISMATCH);
    expectChanged();
    SafeArrayDestroy(odd[3].parray);
    EXPECT_EQ(referencesOf(script.Get()), 1U);
}

TEST_F(ControlPersistenceOverCom, ValuesOfAKindredTypeAreConverted) {
    bag_.values[L"BackColor"].vt = VT_UI4;
    bag_.values[L"BackColor"].ulVal = 0x8000000F;
    bag_.values[L"ForeColor"].vt = VT_BSTR;
    bag_.values[L"ForeColor"].bstrVal = SysAllocString(L"12");
    bag_.values[L"Enabled"].vt = VT_I2;
    const ComPtr<IDispatch> font = makeSystemFont(L"Tahoma", 20);
    bag_.values[L"Font"].vt = VT_UNKNOWN;
    bag_.values[L"Font"].punkVal = font.Get();
    font->AddRef();
    EXPECT_EQ(bagFace()->Load(&bag_, nullptr), S_OK);
    EXPECT_EQ(colour(L"BackColor"), 0x8000000FU);
    EXPECT_EQ(colour(L"ForeColor"), 12U);
    EXPECT_EQ(numberMember(control_.Get(), L"Enabled"), 0);
    EXPECT_EQ(objectMember(control_.Get(), L"Font").Get(), font.Get());
}

TEST_F(ControlPersistenceOverCom, TheContainersErrorLogNamesTheDamagedValue) {
    ErrorLog log;
    bag_.values[L"ForeColor"].vt = VT_NULL;
    EXPECT_EQ(bagFace()->Load(&bag_, &log), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(log.errors, (std::map<std::wstring, HRESULT>{{L"ForeColor", DISP_E_TYPEMISMATCH}}));
    EXPECT_EQ(log.references, 1U);
}

TEST_F(ControlPersistenceOverCom, ABagThatLetsGoOfTheControlWhileItIsReadIsSurvived) {
    for (const std::wstring& victim : kAllNames) {
        control_ = create(L"CVLog3.CVLogControl");
        const auto window =
            reinterpret_cast<HWND>(static_cast<LONG_PTR>(numberMember(control_.Get(), L"hwnd")));
        IPersistPropertyBag* const raw = bagFace().Get(); // the control's reference is the last one
        bag_.reading = [&](const std::wstring& name) {
            if (name == victim) control_.Reset();
        };
        EXPECT_EQ(raw->Load(&bag_, nullptr), S_OK);
        EXPECT_EQ(control_.Get(), nullptr);
        EXPECT_FALSE(IsWindow(window));
    }
    bag_.reading = nullptr;
}

TEST_F(ControlPersistenceOverCom, ReadingABagLeavesNoReferenceToItsFont) {
    const ComPtr<IDispatch> font = makeSystemFont(L"Tahoma", 20);
    const ULONG references = referencesOf(font.Get());
    EXPECT_EQ(loadOne(L"Font", asVariant(font.Get())), S_OK);
    EXPECT_GT(referencesOf(font.Get()), references);
    EXPECT_EQ(bagFace()->InitNew(), S_OK);
    EXPECT_EQ(referencesOf(font.Get()), references);
}

TEST_F(ControlPersistenceOverCom, ChangesMakeItDirtyUntilTheyAreSaved) {
    EXPECT_FALSE(isDirty());
    EXPECT_EQ(putMember(control_.Get(), L"BackColor", Variant(7)), S_OK);
    EXPECT_TRUE(isDirty());
    EXPECT_EQ(bagFace()->Save(&bag_, FALSE, TRUE), S_OK);
    EXPECT_TRUE(isDirty());
    EXPECT_EQ(bagFace()->Save(&bag_, TRUE, TRUE), S_OK);
    EXPECT_FALSE(isDirty());
    EXPECT_EQ(putMember(objectMember(control_.Get(), L"Font").Get(), L"Bold", truth(true)), S_OK);
    EXPECT_TRUE(isDirty());
}

class ControlStreamOverCom : public ControlPersistenceOverCom {
protected:
    static ComPtr<IStream> streamOf(const std::vector<BYTE>& bytes) {
        ComPtr<IStream> stream;
        EXPECT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, &stream), S_OK);
        stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr);
        stream->Seek({}, STREAM_SEEK_SET, nullptr);
        return stream;
    }
    std::vector<BYTE> saved() {
        const ComPtr<IStream> stream = streamOf({});
        EXPECT_EQ(streamFace()->Save(stream.Get(), TRUE), S_OK);
        ULARGE_INTEGER size = {};
        stream->Seek({}, STREAM_SEEK_END, &size);
        ULARGE_INTEGER expected = {};
        EXPECT_EQ(streamFace()->GetSizeMax(&expected), S_OK);
        EXPECT_EQ(size.QuadPart, expected.QuadPart);
        stream->Seek({}, STREAM_SEEK_SET, nullptr);
        std::vector<BYTE> bytes(static_cast<std::size_t>(size.QuadPart));
        EXPECT_EQ(stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr), S_OK);
        return bytes;
    }
};

TEST_F(ControlStreamOverCom, GivesBackWhatItGotAndLeavesTheRestOfTheStream) {
    changeAll();
    std::vector<BYTE> bytes = saved();
    EXPECT_FALSE(isDirty());
    const std::size_t own = bytes.size();
    bytes.insert(bytes.end(), 10, 0xEE);
    control_ = create(L"CVLog3.CVLogControl");
    const ComPtr<IStream> stream = streamOf(bytes);
    EXPECT_EQ(streamFace()->Load(stream.Get()), S_OK);
    expectChanged();
    EXPECT_FALSE(isDirty());
    ULARGE_INTEGER position = {};
    stream->Seek({}, STREAM_SEEK_CUR, &position);
    EXPECT_EQ(position.QuadPart, own);
}

TEST_F(ControlStreamOverCom, AStreamThatIsCutAtAnyByteFailsAndLeavesTheControlAsItWas) {
    putMember(control_.Get(), L"BackColor", Variant(1));
    putMember(control_.Get(), L"Font", asVariant(makeSystemFont(L"Arial", 9).Get()));
    const std::vector<BYTE> bytes = saved();
    changeAll();
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        const ComPtr<IStream> cut = streamOf({bytes.begin(), bytes.begin() + static_cast<int>(length)});
        EXPECT_TRUE(FAILED(streamFace()->Load(cut.Get()))) << length;
    }
    expectChanged();
    EXPECT_TRUE(isDirty());
}

TEST_F(ControlStreamOverCom, AStorageGivesBackWhatItGot) {
    changeAll();
    ComPtr<IStorage> storage;
    ASSERT_EQ(StgCreateDocfile(nullptr,
                               STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE | STGM_DELETEONRELEASE, 0,
                               &storage),
              S_OK);
    const auto face = [this] { return as<IPersistStorage>(IID_IPersistStorage); };
    EXPECT_EQ(face()->Save(storage.Get(), TRUE), S_OK);
    EXPECT_EQ(face()->IsDirty(), S_OK) << "saved only when the container says so";
    EXPECT_EQ(face()->SaveCompleted(nullptr), S_OK);
    EXPECT_EQ(face()->IsDirty(), S_FALSE);
    control_ = create(L"CVLog3.CVLogControl");
    EXPECT_EQ(face()->Load(storage.Get()), S_OK);
    expectChanged();
    EXPECT_EQ(face()->InitNew(storage.Get()), S_OK);
    EXPECT_EQ(colour(L"BackColor"), 0x80000005U);
}

TEST_F(ControlStreamOverCom, ACopyInAnotherStorageLeavesTheControlDirty) {
    changeAll();
    ComPtr<IStorage> storage;
    ASSERT_EQ(StgCreateDocfile(nullptr,
                               STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE | STGM_DELETEONRELEASE, 0,
                               &storage),
              S_OK);
    const auto face = as<IPersistStorage>(IID_IPersistStorage);
    EXPECT_EQ(face->Save(storage.Get(), FALSE), S_OK);
    EXPECT_EQ(face->SaveCompleted(nullptr), S_OK);
    EXPECT_EQ(face->IsDirty(), S_OK);
}

TEST_F(ControlStreamOverCom, AnEmptyStorageFails) {
    ComPtr<IStorage> storage;
    ASSERT_EQ(StgCreateDocfile(nullptr,
                               STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE | STGM_DELETEONRELEASE, 0,
                               &storage),
              S_OK);
    EXPECT_EQ(as<IPersistStorage>(IID_IPersistStorage)->Load(storage.Get()), STG_E_FILENOTFOUND);
}

TEST_F(ControlStreamOverCom, MissingArgumentsAreRefused) {
    EXPECT_EQ(bagFace()->Load(nullptr, nullptr), E_POINTER);
    EXPECT_EQ(bagFace()->Save(nullptr, TRUE, TRUE), E_POINTER);
    EXPECT_EQ(streamFace()->Load(nullptr), E_POINTER);
    EXPECT_EQ(streamFace()->Save(nullptr, TRUE), E_POINTER);
    EXPECT_EQ(streamFace()->GetSizeMax(nullptr), E_POINTER);
    EXPECT_EQ(as<IPersistStorage>(IID_IPersistStorage)->Load(nullptr), E_POINTER);
    EXPECT_EQ(bagFace()->GetClassID(nullptr), E_POINTER);
    CLSID id = {};
    EXPECT_EQ(bagFace()->GetClassID(&id), S_OK);
    EXPECT_TRUE(id == com::kControlClass);
}

// Such containers make a picture of a control that never gets a window of theirs.
TEST_F(ControlStreamOverCom, AContainerWithoutASiteMayLoadDrawStoreAndRelease) {
    changeAll();
    EXPECT_EQ(streamFace()->Load(streamOf(saved()).Get()), S_OK);
    const auto picture = as<IViewObject2>(IID_IViewObject2);
    const HDC screen = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, 100, 50);
    const HGDIOBJ before = SelectObject(memory, bitmap);
    const RECTL bounds = {0, 0, 100, 50};
    EXPECT_EQ(
        picture->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, memory, &bounds, nullptr, nullptr, 0),
        S_OK);
    SelectObject(memory, before);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    const auto object = as<IOleObject>(IID_IOleObject);
    EXPECT_TRUE(FAILED(object->DoVerb(OLEIVERB_SHOW, nullptr, nullptr, 0, nullptr, nullptr)));
    EXPECT_EQ(object->Close(OLECLOSE_NOSAVE), S_OK);
    expectChanged();
}

TEST_F(ControlStreamOverCom, ManyControlsWithFontsLeaveNoHandles) {
    DWORD userHandles = 0;
    DWORD gdiHandles = 0;
    for (int round = 0; round < 30; ++round) {
        control_ = create(L"CVLog3.CVLogControl");
        changeAll();
        putMember(objectMember(control_.Get(), L"Font").Get(), L"Size", Variant(10 + round));
        EXPECT_EQ(streamFace()->Load(streamOf(saved()).Get()), S_OK);
        control_.Reset();
        if (round != 4) continue; // caches of the system have filled by then
        userHandles = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
        gdiHandles = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    }
    EXPECT_LE(GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS), userHandles);
    EXPECT_LE(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS), gdiHandles);
}

} // namespace
} // namespace cvlog::tests
