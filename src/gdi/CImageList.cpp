#include <vmcore/gdi/CImageList.h>

#include <unordered_set>
#include <utility>
#include <vector>

#include <vmcore/gdi/CBitmap.h>

#include "gdi/imageList.h"
#include "gdi/imageOwners.h"
#include "platform/Image.h"

namespace vm {

struct ImageListRecord {
    std::vector<HBITMAP> bitmaps;
};

namespace {
// Controls keep the handles of lists that their owners may destroy first.
std::unordered_set<HIMAGELIST>& LiveLists() {
    static auto* const s_lists = new std::unordered_set<HIMAGELIST>;
    return *s_lists;
}
} // namespace

QImage PixelsOf(HIMAGELIST list, int index) {
    if (!LiveLists().count(list) || index < 0 || index >= ImageList_GetImageCount(list)) return {};
    const Image* image = OwnedImage(list->bitmaps[static_cast<std::size_t>(index)]);
    return image ? image->Pixels() : QImage();
}

} // namespace vm

HIMAGELIST ImageList_Create(int, int, unsigned int, int, int) {
    return *vm::LiveLists().insert(new vm::ImageListRecord).first;
}

int ImageList_Add(HIMAGELIST list, HBITMAP bitmap, HBITMAP) {
    if (!list) return -1;
    list->bitmaps.push_back(bitmap);
    return ImageList_GetImageCount(list) - 1;
}

int ImageList_GetImageCount(HIMAGELIST list) {
    return list ? static_cast<int>(list->bitmaps.size()) : 0;
}

BOOL ImageList_Destroy(HIMAGELIST list) {
    vm::LiveLists().erase(list);
    delete list;
    return list != nullptr;
}

CImageList::~CImageList() {
    ImageList_Destroy(m_hImageList);
}

BOOL CImageList::Create(int width, int height, unsigned int flags, int initial, int grow) {
    DeleteImageList();
    return Attach(ImageList_Create(width, height, flags, initial, grow));
}

int CImageList::Add(const CBitmap* bitmap, const CBitmap*) {
    HBITMAP const handle = bitmap ? static_cast<HBITMAP>(*bitmap) : nullptr;
    return handle ? ImageList_Add(m_hImageList, handle, nullptr) : -1;
}

int CImageList::Add(const CBitmap* bitmap, COLORREF) {
    return Add(bitmap);
}

BOOL CImageList::DeleteImageList() {
    return ImageList_Destroy(Detach());
}

BOOL CImageList::Attach(HIMAGELIST list) {
    m_hImageList = list;
    return list != nullptr;
}

HIMAGELIST CImageList::Detach() {
    return std::exchange(m_hImageList, nullptr);
}
