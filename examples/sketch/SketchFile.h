// SketchFile.h : the text format of drawings
//
//     Sketch 1
//     page 720 480
//     grid 20 show snap
//     freehand #1F4E8C 3 - 10,10 12,14 20,30
//     rectangle #A03020 2 #F0E0D0 40,40 200,120
//     text #000000 24 50,60 Hello, world
//
// A line for each shape, the one at the back first: its kind, the pen's colour and width, the
// inside's colour ("-": none) and its points. A text has a height in place of the width and one
// point; the rest of its line is the text. Empty lines and those that begin with ';' are passed
// over.

#pragma once

#include "Shape.h"

const int MIN_PAGE = 50;
const int MAX_PAGE = 5000;
const int MIN_GRID = 4;
const int MAX_GRID = 100;

struct CPageSetup {
    int m_nWidth = 720;
    int m_nHeight = 480;
    int m_nGrid = 20;
    BOOL m_bShowGrid = TRUE;
    BOOL m_bSnap = FALSE;
    BOOL m_bDots = FALSE; // of the grid, in place of lines
};

struct CSketchData {
    CPageSetup m_page;
    std::vector<CShapePtr> m_shapes;
};

// Where reading stopped, counted from 1, and why
struct CSketchError {
    int m_nLine = 0;
    std::string m_strText;
};

// FALSE, and nothing in `data` is changed, for a file that is not entirely good.
BOOL ReadSketch(const std::string& text, CSketchData& data, CSketchError& error);
std::string WriteSketch(const CSketchData& data);

// The same with a file. An unreadable one is an error of line 0.
BOOL LoadSketch(LPCSTR lpszPath, CSketchData& data, CSketchError& error);
BOOL SaveSketch(LPCSTR lpszPath, const CSketchData& data);
