// SketchFile.cpp : the text format of drawings
//

#include "stdafx.h"

#include "SketchFile.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static const DWORD MAX_FILE = 16 * 1024 * 1024;
static const LPCSTR kindWords[] = {"freehand", "line", "rectangle", "ellipse", "text"};

// One line, word by word. The first mistake is kept, and nothing is read from then on.
class CLineReader {
public:
    explicit CLineReader(const std::string& line) : m_rest(line) {}

    std::string Word()
    {
        SkipBlanks();
        const size_t end = m_rest.find_first_of(" \t");
        const std::string word = m_rest.substr(0, end);
        m_rest = end == std::string::npos ? std::string() : m_rest.substr(end);
        return word;
    }
    std::string Rest()
    {
        SkipBlanks();
        return m_rest;
    }
    BOOL AtEnd()
    {
        SkipBlanks();
        return m_rest.empty();
    }
    int Number(LPCSTR what, int nLow, int nHigh) { return Number(Word(), what, nLow, nHigh); }
    COLORREF Color(LPCSTR what, BOOL* pNone = NULL)
    {
        const std::string word = Word();
        if (pNone)
            *pNone = word == "-";
        if (pNone && *pNone)
            return 0;
        char* end = NULL;
        const unsigned long number = word.size() == 7 ? strtoul(word.c_str() + 1, &end, 16) : 0;
        if (word.size() != 7 || word[0] != '#' || word[1] == '-' || word[1] == '+' || *end)
            Fail(std::string(what) + " is no colour like #1F4E8C: '" + word + "'");
        return RGB(number >> 16 & 255, number >> 8 & 255, number & 255);
    }
    CPoint Point()
    {
        const std::string word = Word();
        const size_t comma = word.find(',');
        if (comma == std::string::npos) {
            Fail("a point like 10,20 is expected: '" + word + "'");
            return CPoint(0, 0);
        }
        return CPoint(
            Number(word.substr(0, comma), "a coordinate", -MAX_COORDINATE, MAX_COORDINATE),
            Number(word.substr(comma + 1), "a coordinate", -MAX_COORDINATE, MAX_COORDINATE));
    }
    void Fail(const std::string& text)
    {
        if (m_error.empty())
            m_error = text;
    }
    const std::string& Error() const { return m_error; }

private:
    int Number(const std::string& word, LPCSTR what, int nLow, int nHigh)
    {
        char* end = NULL;
        const long number = strtol(word.c_str(), &end, 10);
        if (word.empty() || *end || number < nLow || number > nHigh) {
            char range[80];
            snprintf(range, sizeof range, " must be between %d and %d: '", nLow, nHigh);
            Fail(what + std::string(range) + word + "'");
            return nLow;
        }
        return (int)number;
    }
    void SkipBlanks()
    {
        const size_t first = m_rest.find_first_not_of(" \t");
        m_rest = first == std::string::npos ? std::string() : m_rest.substr(first);
    }

    std::string m_rest;
    std::string m_error;
};

static void ReadGrid(CLineReader& line, CPageSetup& page)
{
    page.m_nGrid = line.Number("the grid", MIN_GRID, MAX_GRID);
    page.m_bShowGrid = page.m_bSnap = page.m_bDots = FALSE;
    while (!line.AtEnd()) {
        const std::string word = line.Word();
        if (word == "show")
            page.m_bShowGrid = TRUE;
        else if (word == "snap")
            page.m_bSnap = TRUE;
        else if (word == "dots")
            page.m_bDots = TRUE;
        else
            line.Fail("the grid knows show, snap and dots: '" + word + "'");
    }
}

static void ReadPoints(CLineReader& line, CShape& shape)
{
    shape.m_style.m_nWidth = line.Number("the pen's width", 1, MAX_PEN_WIDTH);
    BOOL bNone = FALSE;
    const COLORREF crFill = line.Color("the inside", &bNone);
    shape.m_style.m_bFilled = !bNone;
    if (!bNone)
        shape.m_style.m_crFill = crFill;
    while (!line.AtEnd() && line.Error().empty())
        shape.m_points.push_back(line.Point());
    const size_t count = shape.m_points.size();
    if (shape.m_kind == SHAPE_FREEHAND ? count < 1 : count != 2)
        line.Fail(shape.m_kind == SHAPE_FREEHAND ? "a freehand line has points"
                                                 : "this shape has two points");
}

static void ReadLetters(CLineReader& line, CShape& shape)
{
    shape.m_nTextHeight = line.Number("the text's height", MIN_TEXT_HEIGHT, MAX_TEXT_HEIGHT);
    shape.m_points.push_back(line.Point());
    shape.m_strText = line.Rest();
    if (shape.m_strText.empty() || shape.m_strText.size() > (size_t)MAX_TEXT_LENGTH)
        line.Fail("a text has between 1 and 200 characters");
}

static void ReadShape(const std::string& word, CLineReader& line, CSketchData& data)
{
    int kind = 0;
    while (kind <= SHAPE_TEXT && word != kindWords[kind])
        ++kind;
    if (kind > SHAPE_TEXT)
        return line.Fail("'" + word + "' is not known");
    auto pShape = std::make_shared<CShape>();
    pShape->m_kind = (ShapeKind)kind;
    pShape->m_style.m_crPen = line.Color("the pen");
    if (pShape->m_kind == SHAPE_TEXT)
        ReadLetters(line, *pShape);
    else
        ReadPoints(line, *pShape);
    data.m_shapes.push_back(pShape);
}

static void ReadLine(CLineReader& line, CSketchData& data)
{
    const std::string word = line.Word();
    if (word == "page") {
        data.m_page.m_nWidth = line.Number("the page's width", MIN_PAGE, MAX_PAGE);
        data.m_page.m_nHeight = line.Number("the page's height", MIN_PAGE, MAX_PAGE);
        if (!line.AtEnd())
            line.Fail("a page has a width and a height only");
    } else if (word == "grid") {
        ReadGrid(line, data.m_page);
    } else {
        ReadShape(word, line, data);
    }
}

static BOOL Refuse(CSketchError& error, int nLine, const std::string& text)
{
    error.m_nLine = nLine;
    error.m_strText = text;
    return FALSE;
}

BOOL ReadSketch(const std::string& text, CSketchData& data, CSketchError& error)
{
    if (text.find('\0') != std::string::npos)
        return Refuse(error, 1, "this is no text");
    CSketchData read;
    int number = 0;
    for (size_t start = 0; start < text.size() || number == 0;) {
        const size_t end = text.find('\n', start);
        std::string line = text.substr(start, end == std::string::npos ? end : end - start);
        start = end == std::string::npos ? text.size() : end + 1;
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        if (++number == 1) {
            if (line != "Sketch 1")
                return Refuse(error, 1, "a drawing begins with 'Sketch 1'");
            continue;
        }
        CLineReader reader(line);
        if (reader.AtEnd() || line[0] == ';')
            continue;
        ReadLine(reader, read);
        if (!reader.Error().empty())
            return Refuse(error, number, reader.Error());
    }
    data = read;
    return TRUE;
}

static std::string ColorWord(COLORREF color)
{
    char word[16];
    snprintf(word, sizeof word, "#%02X%02X%02X", GetRValue(color), GetGValue(color),
             GetBValue(color));
    return word;
}

static std::string PointWord(const CPoint& point)
{
    return std::to_string(point.x) + "," + std::to_string(point.y);
}

static std::string ShapeLine(const CShape& shape)
{
    std::string line = kindWords[shape.m_kind];
    line += " " + ColorWord(shape.m_style.m_crPen);
    if (shape.m_kind == SHAPE_TEXT)
        return line + " " + std::to_string(shape.m_nTextHeight) + " " +
               PointWord(shape.m_points[0]) + " " + shape.m_strText;
    line += " " + std::to_string(shape.m_style.m_nWidth) + " ";
    line += shape.m_style.m_bFilled ? ColorWord(shape.m_style.m_crFill) : "-";
    for (const CPoint& point : shape.m_points)
        line += " " + PointWord(point);
    return line;
}

std::string WriteSketch(const CSketchData& data)
{
    const CPageSetup& page = data.m_page;
    std::string text = "Sketch 1\n";
    text += "page " + std::to_string(page.m_nWidth) + " " + std::to_string(page.m_nHeight) + "\n";
    text += "grid " + std::to_string(page.m_nGrid) + (page.m_bShowGrid ? " show" : "") +
            (page.m_bSnap ? " snap" : "") + (page.m_bDots ? " dots" : "") + "\n";
    for (const CShapePtr& pShape : data.m_shapes)
        text += ShapeLine(*pShape) + "\n";
    return text;
}

BOOL LoadSketch(LPCSTR lpszPath, CSketchData& data, CSketchError& error)
{
    CFile file;
    CFileException failure;
    if (!file.Open(lpszPath, CFile::modeRead | CFile::shareDenyWrite, &failure))
        return Refuse(error, 0, "the file cannot be opened");
    const DWORD length = (DWORD)file.GetLength();
    if (length > MAX_FILE)
        return Refuse(error, 0, "the file is too large");
    std::string text(length, ' ');
    if (file.Read(&text[0], length) != length)
        return Refuse(error, 0, "the file cannot be read");
    file.Close();
    return ReadSketch(text, data, error);
}

BOOL SaveSketch(LPCSTR lpszPath, const CSketchData& data)
{
    const std::string text = WriteSketch(data);
    CFile file;
    CFileException failure;
    if (!file.Open(lpszPath, CFile::modeCreate | CFile::modeWrite, &failure))
        return FALSE;
    file.Write(text.data(), (UINT)text.size());
    const BOOL bWhole = file.GetPosition() == text.size();
    file.Close();
    return bWhole;
}
