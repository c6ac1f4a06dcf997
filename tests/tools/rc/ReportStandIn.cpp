// The report as far as the writers need it, until the tool's own is linked.
#include "rc/report.h"

namespace vm::rc {

void Report::Add(Finding finding) {
    m_findings.push_back(std::move(finding));
}

} // namespace vm::rc
