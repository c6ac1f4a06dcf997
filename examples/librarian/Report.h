// The report: one line for each thing done, appended to the file that LIBRARIAN_REPORT names.
// Nothing happens without that variable. Scripts that drive the program read it.
#pragma once

[[gnu::format(printf, 1, 2)]] void Report(const char* format, ...);
