#include "gdi/selection.h"

#include <algorithm>
#include <vector>

#include <vmcore/gdi/CDC.h>

namespace vm {
namespace {

std::vector<CDC*>& Contexts() {
    static auto* const s_contexts = new std::vector<CDC*>;
    return *s_contexts;
}

} // namespace

void AddDeviceContext(CDC& dc) {
    Contexts().push_back(&dc);
}

void RemoveDeviceContext(CDC& dc) { // mostly the last one made
    auto& all = Contexts();
    const auto found = std::find(all.rbegin(), all.rend(), &dc);
    if (found != all.rend()) all.erase(std::next(found).base());
}

void Deselect(const void* record, const void* object) {
    for (CDC* dc : Contexts()) dc->Deselect(record, object);
    if (record) ForgetHandle(record);
}

} // namespace vm
