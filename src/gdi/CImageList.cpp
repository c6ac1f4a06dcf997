#include <vmcore/gdi/CImageList.h>

#include <utility>
#include <vector>

namespace vm {

struct ImageListRecord {
    std::vector<HBITMAP> bitmaps;
};

} // namespace vm

HIMAGELIST ImageList_Create(int, int, unsigned int, int, int) {
    return new vm::ImageListRecord;
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
    delete list;
    return list != nullptr;
}

CImageList::~CImageList() {
    ImageList_Destroy(m_hImageList);
}

BOOL CImageList::Attach(HIMAGELIST list) {
    m_hImageList = list;
    return list != nullptr;
}

HIMAGELIST CImageList::Detach() {
    return std::exchange(m_hImageList, nullptr);
}
