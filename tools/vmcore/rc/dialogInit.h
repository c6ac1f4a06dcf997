// DLGINIT, what the lists of a dialog hold at first: its bytes taken apart, and its texts given to the
// controls of the dialog.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "rc/report.h"
#include "rc/script.h"

namespace vm::rc {

struct InitRecord {
    int control = 0;
    int message = 0;
    std::string bytes;
};

struct InitRecords {
    std::vector<InitRecord> records;
    std::string trouble; ///< what is wrong behind them; empty of a block that ends as it must
};

/// Words in little endian: control, message, length as two words, that many bytes; a zero ends it.
InitRecords InitRecordsOf(std::string_view bytes);

/// Texts go into Control::items of the dialog with the same number. Every DLGINIT with bytes is taken out
/// of the resources, and the report has a line for it and one for each of its records that is left out.
void GiveTexts(std::vector<Resource>& resources, Report& report);

} // namespace vm::rc
