#!/usr/bin/python3
"""test_message_map_errors.py COMPILER INCLUDE_FOLDER

Compiles a small window class for each row: a handler, a map entry and words of the error that must come
of them, none for what must compile. The names beside a row's words are what a reader looks for.
"""

import concurrent.futures
import os
import subprocess
import sys

SOURCE = """#include <afxwin.h>
class Pane : public CWnd {{
    {handler}
    DECLARE_MESSAGE_MAP()
}};
BEGIN_MESSAGE_MAP(Pane, CWnd)
    {entry}
END_MESSAGE_MAP()
"""

MUST_BE = "the handler of this message map entry must be: "
ROWS = [
    ("void OnX() {}", "ON_COMMAND(1, OnX) ON_COMMAND(2, &Pane::OnX)", ""),
    ("void OnX(int) {}", "ON_COMMAND(1, &Pane::OnX)", MUST_BE + "void OnX()"),
    ("void OnX(int) {}", "ON_COMMAND(1, OnX)", "OnX"),
    ("int OnX() { return 1; }", "ON_COMMAND(1, &Pane::OnX)", MUST_BE + "void OnX()"),
    ("int OnX() { return 1; }", "ON_COMMAND(1, OnX)", MUST_BE + "void OnX()"),
    ("", "ON_COMMAND(1, &Pane::OnX)", "OnX"),
    ("", "ON_COMMAND(1, OnX)", "OnX"),
    ("void OnX(UINT) {}", "ON_COMMAND_EX(1, &Pane::OnX)", MUST_BE + "BOOL OnX(UINT id)"),
    ("void OnX() {}", "ON_UPDATE_COMMAND_UI(1, &Pane::OnX)", MUST_BE + "void OnX(CCmdUI* state)"),
    ("void OnX(NMHDR*) {}", "ON_NOTIFY(1, 2, &Pane::OnX)",
     MUST_BE + "void OnX(NMHDR* notice, LRESULT* result)"),
    # Half of a result or a parameter would be lost.
    ("int OnX(WPARAM, LPARAM) { return 1; }", "ON_MESSAGE(WM_USER, OnX)", MUST_BE + "LRESULT"),
    ("LRESULT OnX(UINT, LPARAM) { return 1; }", "ON_MESSAGE(WM_USER, OnX)", "UINT"),
    ("LRESULT OnX(UINT, LPARAM) { return 1; }", "ON_MESSAGE(WM_USER, &Pane::OnX)",
     MUST_BE + "LRESULT OnX(WPARAM wParam, LPARAM lParam)"),
    ("void OnSize(UINT, CPoint) {}", "ON_WM_SIZE()", "(UINT, int, int)"),
    ("void OnTimer(int) {}", "ON_WM_TIMER()", "UINT"),
    ("void OnHScroll(UINT, UINT, CScrollBar*) {}", "ON_WM_HSCROLL() ON_WM_VSCROLL()", ""),
    ("void OnVScroll(UINT, UINT, CWnd*) {}", "ON_WM_HSCROLL() ON_WM_VSCROLL()", ""),
    ("void OnVScroll(UINT, int, CWnd*) {}", "ON_WM_VSCROLL()", "CScrollBar"),
    # Members of common names are not hidden.
    ("int message, wParam, lParam; void OnX() {}", "ON_COMMAND(1, OnX)", ""),
    # What the library does not send has no entry.
    ("BOOL OnEraseBkgnd(CDC*) { return 1; }", "ON_WM_ERASEBKGND()", "ON_WM_ERASEBKGND"),
    ("void OnX() {}", "ON_EN_HSCROLL(1, OnX)", "ON_EN_HSCROLL"),
    ("", "(void)RUNTIME_CLASS(Pane);", "RecordOfPane"),
]


def problem(compiler, folder, row):
    handler, entry, words = row
    # The compiler's own words are in English then.
    result = subprocess.run(
        [compiler, "-std=c++17", "-Werror=shadow", "-fsyntax-only", f"-I{folder}", "-x", "c++", "-"],
        input=SOURCE.format(handler=handler, entry=entry), capture_output=True, text=True,
        env={**os.environ, "LC_ALL": "C"})
    errors = "\n".join(line for line in result.stderr.splitlines() if "error:" in line or "note:" in line)
    if bool(words) == (result.returncode != 0) and words in errors:
        return None
    return f"{handler}  {entry}\n  expected: {words or 'no error'}\n  got: {errors or 'no error'}"


def main():
    compiler, folder = sys.argv[1:]
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        problems = list(filter(None, pool.map(lambda row: problem(compiler, folder, row), ROWS)))
    print("\n".join(problems) or f"{len(ROWS)} classes as expected")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
