// The control's picture as data that containers keep.

#include "tests/windows/control_view_fixture.h"
#include "tests/windows/drawn_pixels.h"

namespace cvlog::tests {
namespace {

class ControlData : public ControlViewTest {
protected:
    void SetUp() override {
        ControlViewTest::SetUp();
        data_ = as<IDataObject>(IID_IDataObject);
        SIZEL extent = {8000, 4000};
        EXPECT_EQ(object_->SetExtent(DVASPECT_CONTENT, &extent), S_OK);
    }
    void TearDown() override {
        ReleaseStgMedium(&medium_);
        data_.Reset();
        ControlViewTest::TearDown();
    }
    static FORMATETC format(UINT kind, DWORD medium) {
        return {static_cast<CLIPFORMAT>(kind), nullptr, DVASPECT_CONTENT, -1, medium};
    }
    void get(UINT kind, DWORD medium) {
        FORMATETC wanted = format(kind, medium);
        ASSERT_EQ(data_->GetData(&wanted, &medium_), S_OK);
        EXPECT_EQ(medium_.tymed, medium);
        EXPECT_EQ(medium_.pUnkForRelease, nullptr);
    }
    /// What a container sees that draws the control itself.
    void drawLike(const DrawnPixels& picture) {
        const RECTL bounds{0, 0, picture.width(), picture.height()};
        EXPECT_EQ(view_->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, picture.dc(), &bounds, nullptr,
                              nullptr, 0),
                  S_OK);
    }

    ComPtr<IDataObject> data_;
    STGMEDIUM medium_{};
};

TEST_F(ControlData, IsABitmapOfTheNaturalSize) {
    get(CF_BITMAP, TYMED_GDI);
    BITMAP shape{};
    ASSERT_EQ(GetObjectW(medium_.hBitmap, sizeof shape, &shape), static_cast<int>(sizeof shape));
    DrawnPixels drawn(shape.bmWidth, shape.bmHeight);
    drawLike(drawn);
    DrawnPixels given(shape.bmWidth, shape.bmHeight);
    const HDC dc = CreateCompatibleDC(nullptr);
    const HGDIOBJ before = SelectObject(dc, medium_.hBitmap);
    BitBlt(given.dc(), 0, 0, shape.bmWidth, shape.bmHeight, dc, 0, 0, SRCCOPY);
    SelectObject(dc, before);
    DeleteDC(dc);
    EXPECT_EQ(given.differences(drawn, shape.bmWidth, shape.bmHeight), 0);
}

TEST_F(ControlData, IsAMetafileOfTheExtent) {
    get(CF_METAFILEPICT, TYMED_MFPICT);
    const auto* picture = static_cast<const METAFILEPICT*>(GlobalLock(medium_.hMetaFilePict));
    ASSERT_NE(picture, nullptr);
    EXPECT_EQ(picture->mm, MM_ANISOTROPIC);
    EXPECT_EQ(picture->xExt, 8000);
    EXPECT_EQ(picture->yExt, 4000);
    DrawnPixels played(302, 151);
    SetMapMode(played.dc(), MM_ANISOTROPIC);
    SetViewportExtEx(played.dc(), 302, 151, nullptr);
    EXPECT_TRUE(PlayMetaFile(played.dc(), picture->hMF));
    EXPECT_EQ(played.count(DrawnPixels::kUntouched, {0, 0, 302, 151}), 0);
    GlobalUnlock(medium_.hMetaFilePict);
}

TEST_F(ControlData, IsAnEnhancedMetafileOfTheExtent) {
    get(CF_ENHMETAFILE, TYMED_ENHMF);
    ENHMETAHEADER header{};
    ASSERT_GT(GetEnhMetaFileHeader(medium_.hEnhMetaFile, sizeof header, &header), 0U);
    EXPECT_EQ(header.rclFrame.right - header.rclFrame.left, 8000);
    EXPECT_EQ(header.rclFrame.bottom - header.rclFrame.top, 4000);
    DrawnPixels played(300, 150);
    const RECT whole{0, 0, 299, 149};
    EXPECT_TRUE(PlayEnhMetaFile(played.dc(), medium_.hEnhMetaFile, &whole));
    EXPECT_EQ(played.count(DrawnPixels::kUntouched, {2, 2, 297, 147}), 0) << "it fills its frame";
}

TEST_F(ControlData, SaysWhatItIs) {
    ComPtr<IEnumFORMATETC> formats;
    ASSERT_EQ(data_->EnumFormatEtc(DATADIR_GET, &formats), S_OK);
    FORMATETC each{};
    int count = 0;
    while (formats->Next(1, &each, nullptr) == S_OK) {
        ++count;
        EXPECT_EQ(data_->QueryGetData(&each), S_OK);
    }
    EXPECT_EQ(count, 3);
    EXPECT_EQ(data_->EnumFormatEtc(DATADIR_SET, &formats), E_NOTIMPL);
    FORMATETC wrong = format(CF_TEXT, TYMED_HGLOBAL);
    EXPECT_EQ(data_->GetData(&wrong, &medium_), DV_E_FORMATETC);
    wrong = format(CF_BITMAP, TYMED_HGLOBAL);
    EXPECT_EQ(data_->GetData(&wrong, &medium_), DV_E_TYMED);
    wrong = format(CF_BITMAP, TYMED_GDI);
    wrong.dwAspect = DVASPECT_ICON;
    EXPECT_EQ(data_->GetData(&wrong, &medium_), DV_E_DVASPECT);
    EXPECT_EQ(medium_.tymed, static_cast<DWORD>(TYMED_NULL));
    FORMATETC asked = format(CF_BITMAP, TYMED_GDI);
    FORMATETC same{};
    EXPECT_EQ(data_->GetCanonicalFormatEtc(&asked, &same), DATA_S_SAMEFORMATETC);
}

} // namespace
} // namespace cvlog::tests
