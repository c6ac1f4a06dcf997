#!/usr/bin/python3
"""test_entries.py COMPILER INCLUDE_FOLDER

A message map with entries that the library does not have: one error a line, which says what to do.
"""

import subprocess
import sys

MAP = """#include <afxwin.h>
class Pane : public CWnd { void OnPaint(); void OnKey(); DECLARE_MESSAGE_MAP() };
BEGIN_MESSAGE_MAP(Pane, CWnd)
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
    ON_STN_CLICKED(7, &Pane::OnKey)
END_MESSAGE_MAP()
"""
WANTED = ["<stdin>:5: ON_WM_ERASEBKGND is not there. Instead: fill the background in OnPaint",
          "<stdin>:6: ON_STN_CLICKED is not there. Instead: a CWnd with ON_WM_LBUTTONDOWN"]

compiler, folder = sys.argv[1:]
result = subprocess.run([compiler, "-std=c++17", "-fsyntax-only", "-isystem", folder, "-x", "c++", "-"],
                        input=MAP, capture_output=True, text=True)
errors = [line.split(":", 3) for line in result.stderr.splitlines() if ": error: " in line]
found = [f"{file}:{line}:{text.partition('error:')[2]}" for file, line, _, text in errors]
if len(found) != len(WANTED) or not all(a.startswith(b) for a, b in zip(found, WANTED)):
    sys.exit(result.stderr)
