// The common dialogs, each asked once; what was chosen comes back as a line.
#pragma once

#include <string>

#include <afxwin.h>

std::string AskSheet(CWnd* parent);
std::string AskOpen(CWnd* parent);
std::string AskSave(CWnd* parent);
std::string AskFolder(CWnd* parent);
std::string AskFont(CWnd* parent);
std::string AskColor(CWnd* parent);
