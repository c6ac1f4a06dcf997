// The two switches that an application sets at launch for its desktop. Nothing reads them here but
// a host that asks; they live in memory.
#pragma once

namespace vm {
void SetUserDefault(const char* name, bool value);
}
