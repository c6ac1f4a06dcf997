// Which device contexts there are, so that none keeps what is being deleted. Main thread.
#pragma once

class CDC;

namespace vm {

void AddDeviceContext(CDC& dc);
void RemoveDeviceContext(CDC& dc);

/// What is selected anywhere by this record, or through this object, no longer is: a stock pen or
/// brush, or no font, takes its place. Either may be null.
void Deselect(const void* record, const void* object);

/// The part of it for the objects that stand for a bare handle.
void ForgetHandle(const void* record);

} // namespace vm
