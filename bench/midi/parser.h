// Splitting received bytes into messages, and what the whole way from a send to a callback allocates.
#pragma once

namespace bench {

void ReportParser();

} // namespace bench
