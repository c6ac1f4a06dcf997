#include "gdi/imageOwners.h"

#include <unordered_map>

#include "platform/Image.h"

namespace vm {
namespace {

std::unordered_map<const void*, Image*>& Owners() {
    static auto* const s_owners = new std::unordered_map<const void*, Image*>;
    return *s_owners;
}

} // namespace

void GiveImage(const void* record, Image* image) {
    if (image) Owners().emplace(record, image);
}

Image* OwnedImage(const void* record) {
    const auto owner = Owners().find(record);
    return owner == Owners().end() ? nullptr : owner->second;
}

void ReleaseImageOf(const void* record) {
    const auto owner = Owners().find(record);
    if (owner == Owners().end()) return;
    Image* const image = owner->second;
    Owners().erase(owner);
    image->Release();
}

} // namespace vm
