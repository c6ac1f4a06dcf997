// The end of the profile store, for the library's own.
#pragma once

namespace vm {

/// Takes the lock out of profileCS; the profiles are written when the process exits.
void DeleteProfileLock();

/// Writes and forgets every profile, as the end of the process does.
void ClearProfiles();

} // namespace vm
