#include "net/ftpLimits.h"

namespace vm {

FtpLimits& CurrentFtpLimits() {
    static FtpLimits s_limits;
    return s_limits;
}

} // namespace vm
