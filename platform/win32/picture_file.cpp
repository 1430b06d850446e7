#include "platform/win32/picture_file.h"

#include "platform/win32/wide_text.h"

#include <wincodec.h>
#include <wrl/client.h>

#include <algorithm>
#include <stdexcept>

namespace cvlog::platform::win32 {

namespace {

using Microsoft::WRL::ComPtr;

constexpr UINT kLargestSide = 4096;
constexpr UINT kMostFrames = 32;

void require(HRESULT result) {
    if (FAILED(result)) throw std::runtime_error("the picture cannot be read");
}

ComPtr<IWICImagingFactory> makeFactory() {
    ComPtr<IWICImagingFactory> factory;
    require(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                             reinterpret_cast<void**>(factory.GetAddressOf())));
    return factory;
}

Image readFrame(IWICImagingFactory& factory, IWICBitmapSource& frame) {
    UINT width = 0;
    UINT height = 0;
    require(frame.GetSize(&width, &height));
    if (width == 0 || height == 0 || width > kLargestSide || height > kLargestSide)
        throw std::runtime_error("the picture has no usable size");
    ComPtr<IWICFormatConverter> converter;
    require(factory.CreateFormatConverter(converter.GetAddressOf()));
    require(converter->Initialize(&frame, GUID_WICPixelFormat32bppPBGRA, WICBitmapDitherTypeNone, nullptr, 0,
                                  WICBitmapPaletteTypeCustom));
    Image image{static_cast<int>(width), static_cast<int>(height),
                std::vector<std::uint32_t>(std::size_t{width} * height)};
    const UINT stride = width * sizeof(std::uint32_t);
    require(
        converter->CopyPixels(nullptr, stride, stride * height, reinterpret_cast<BYTE*>(image.argb.data())));
    return image;
}

} // namespace

std::vector<Image> readPictureFile(std::u16string_view path) {
    const auto factory = makeFactory();
    ComPtr<IWICBitmapDecoder> decoder;
    require(factory->CreateDecoderFromFilename(nameText(path).c_str(), nullptr, GENERIC_READ,
                                               WICDecodeMetadataCacheOnDemand, decoder.GetAddressOf()));
    GUID format{};
    UINT count = 0;
    require(decoder->GetContainerFormat(&format));
    require(decoder->GetFrameCount(&count));
    if (format != GUID_ContainerFormatIco)
        count = std::min(count, 1U); // the others' frames are times, not sizes
    std::vector<Image> images;
    for (UINT i = 0; i < std::min(count, kMostFrames); ++i) {
        ComPtr<IWICBitmapFrameDecode> frame;
        require(decoder->GetFrame(i, frame.GetAddressOf()));
        images.push_back(readFrame(*factory.Get(), *frame.Get()));
    }
    if (images.empty()) throw std::runtime_error("the picture is empty");
    return images;
}

} // namespace cvlog::platform::win32
