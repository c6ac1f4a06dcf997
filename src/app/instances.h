// The registry of loaded instances.
#pragma once

namespace vm {
void RegisterInstance(const void* handle, const char* name);
}
