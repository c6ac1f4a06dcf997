// Internet transfer. Ported code includes it for the base types too.
#pragma once

#include <vmcore/core/CString.h>
#include <vmcore/core/types.h>
