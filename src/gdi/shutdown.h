// Whether the application is about to quit. From then on no GDI record is freed: windows that still
// paint may hold its handle.
#pragma once

namespace vm {

bool CloseRequestVerified();
void SetCloseRequestVerified();

} // namespace vm
