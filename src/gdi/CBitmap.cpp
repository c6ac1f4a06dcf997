#include <vmcore/gdi/CBitmap.h>

#include <cstddef>
#include <cstdint>

#include <QtCore/QFile>

#include <vmcore/app/lifecycle.h>

#include "core/log.h"
#include "gdi/imageOwners.h"
#include "gdi/records.h"
#include "platform/Image.h"
#include "platform/bundle.h"
#include "platform/pngImage.h"

static_assert(sizeof(tagBITMAP) == 32 && sizeof(tagBITMAPRECORD) == 40);
static_assert(offsetof(tagBITMAP, bmWidthBytes) == 12 && offsetof(tagBITMAP, bmPlanes) == 16);
static_assert(offsetof(tagBITMAP, bmBitsPixel) == 18 && offsetof(tagBITMAP, bmBits) == 24);
static_assert(sizeof(CBitmap) == sizeof(CGdiObject));

namespace {

constexpr int kBitsPerPixel = 32;

QString ArtworkPath(unsigned int id) {
    const NSBundle* const bundle = AfxGetNSBundle();
    if (!bundle) return {};
    const std::string name = vm::Format("/Bitmap_%d.png", static_cast<int>(id));
    return QFile::decodeName((bundle->ResourcePath() + name).c_str());
}

} // namespace

CBitmap::CBitmap() : CGdiObject(BitmapKind) {}

tagBITMAPRECORD* CBitmap::NewBitmap() {
    DeleteObject();
    auto* record = vm::NewRecord<tagBITMAPRECORD>();
    Attach(record);
    return record;
}

bool CBitmap::SetImage(tagBITMAPRECORD& record, vm::Image* image) {
    record.bmBits = image;
    vm::GiveImage(&record, image);
    return image != nullptr;
}

BOOL CBitmap::CreateCompatibleBitmap(CDC*, int width, int height) {
    tagBITMAPRECORD* const record = NewBitmap();
    if (!record) return FALSE;
    record->bmWidth = width;
    record->bmHeight = height;
    record->bmWidthBytes = static_cast<LONG>(4 * static_cast<DWORD>(width));
    record->bmPlanes = 1;
    record->bmBitsPixel = kBitsPerPixel;
    record->owner = this;
    return SetImage(*record, vm::Image::MakeBlank(width, height));
}

BOOL CBitmap::CreateBitmap(int width, int height, unsigned int, unsigned int, const void*) {
    return CreateCompatibleBitmap(nullptr, width, height);
}

BOOL CBitmap::LoadBitmap(unsigned int id) {
    tagBITMAPRECORD* const record = NewBitmap();
    if (!record) return FALSE;
    const QString path = ArtworkPath(id);
    if (!QFile::exists(path)) return TRUE;
    const QImage pixels = vm::ReadPng(path);
    if (!SetImage(*record, vm::Image::Make(pixels))) return FALSE;
    record->bmWidth = pixels.width();
    record->bmHeight = pixels.height();
    record->bmWidthBytes = static_cast<LONG>(pixels.bytesPerLine());
    record->bmBitsPixel = kBitsPerPixel;
    return TRUE;
}

BOOL CBitmap::LoadBitmap(const char* name) {
    return LoadBitmap(static_cast<unsigned int>(reinterpret_cast<std::uintptr_t>(name)));
}

int CBitmap::GetBitmap(tagBITMAP* out) {
    if (!out || !m_hObject) return 0;
    *out = *static_cast<tagBITMAPRECORD*>(m_hObject);
    return sizeof(tagBITMAP);
}

CBitmap* CBitmap::FromHandle(HBITMAP handle) {
    static auto* const s_shared = new CBitmap;
    s_shared->Attach(handle);
    return s_shared;
}
