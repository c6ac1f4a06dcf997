// Internet transfer. Ported code includes it for the base types too.
#pragma once

#include <vmcore/core/CString.h>
#include <vmcore/core/types.h>
#include <vmcore/net/CFtpConnection.h>
#include <vmcore/net/CFtpFileFind.h>
#include <vmcore/net/CInternetSession.h>
