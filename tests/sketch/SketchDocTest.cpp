#include "sketch/stdafx.h"

#include "sketch/SketchDoc.h"

#include <gtest/gtest.h>

#include "support/TemporaryHome.h"

namespace {

CShape Rectangle(int left, int top, int right, int bottom, bool filled = false) {
    CShape shape;
    shape.m_kind = SHAPE_RECTANGLE;
    shape.m_style.m_bFilled = filled;
    shape.m_points = {CPoint(left, top), CPoint(right, bottom)};
    return shape;
}

} // namespace

TEST(SketchDoc, ChangesAreUndoneAndMadeAgain) {
    CSketchDoc doc;
    EXPECT_FALSE(doc.CanUndo() || doc.CanRedo() || doc.IsModified());
    doc.AddShape(Rectangle(0, 0, 10, 10));
    doc.AddShape(Rectangle(20, 0, 30, 10));
    doc.ReplaceShape(0, doc.GetShape(0).Moved(5, 5));
    doc.MoveInStack(0, 1);
    EXPECT_EQ(doc.GetShape(1).GetBounds().left, 5);
    doc.RemoveShape(0);
    for (int i = 0; i < 3; ++i) doc.Undo();
    EXPECT_EQ(doc.GetCount(), 2);
    EXPECT_EQ(doc.GetShape(0).GetBounds().left, 0);
    doc.Redo();
    EXPECT_EQ(doc.GetShape(0).GetBounds().left, 5);
    doc.AddShape(Rectangle(0, 0, 1, 1));
    EXPECT_FALSE(doc.CanRedo()) << "another way was taken";
    EXPECT_TRUE(doc.IsModified());
    doc.OnNewDocument();
    EXPECT_FALSE(doc.CanUndo() || doc.IsModified() || doc.GetCount());
}

TEST(SketchDoc, AClickHitsTheTopmostShapeOrNone) {
    CSketchDoc doc;
    doc.AddShape(Rectangle(0, 0, 100, 100));
    doc.AddShape(Rectangle(50, 50, 150, 150, true));
    CShape line;
    line.m_kind = SHAPE_LINE;
    line.m_points = {CPoint(200, 0), CPoint(300, 100)};
    doc.AddShape(line);
    CShape ellipse = Rectangle(400, 0, 500, 100);
    ellipse.m_kind = SHAPE_ELLIPSE;
    doc.AddShape(ellipse);
    const struct {
        CPoint at;
        int hit;
    } rows[] = {{{2, 50}, 0},    {{25, 25}, -1},  {{75, 75}, 1},  {{100, 60}, 1},
                {{250, 52}, 2},  {{250, 70}, -1}, {{400, 50}, 3}, {{402, 2}, -1},
                {{450, 50}, -1}, {{450, 1}, 3},   {{600, 0}, -1}};
    for (const auto& row : rows)
        EXPECT_EQ(doc.HitTest(row.at, 4), row.hit) << row.at.x << ", " << row.at.y;
}

TEST(SketchDoc, IsSavedToItsOwnFileAgain) {
    TemporaryHome home;
    const std::string path = (home.Path() / "a.sketch").string();
    CSketchDoc doc;
    ASSERT_TRUE(doc.OnSaveDocument(path.c_str()));
    doc.AddShape(Rectangle(0, 0, 10, 10));
    const LPCSTR own = doc.GetPathName();
    ASSERT_TRUE(doc.OnSaveDocument(own));
    EXPECT_EQ(static_cast<LPCSTR>(doc.GetPathName()), own) << "the caller still uses it";
    EXPECT_EQ(own, path);
    EXPECT_FALSE(doc.IsModified());
}
