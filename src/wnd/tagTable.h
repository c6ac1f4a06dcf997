// The views of a loaded interface file by their tags: one hash per root, in place of a walk over
// all its views for every dialog item. It notices new views and changed tags by itself.
#pragma once

class QWidget;

namespace vm {

/// Keeps a hash for the views below `root` from now on.
void KeepTagTable(QWidget* root);
bool HasTagTable(const QWidget* root);
/// The first view below `root` with this tag, parents before children; null when there is none.
QWidget* FindTagged(const QWidget* root, int tag);
/// The tag of a view was changed in a way that no event tells of.
void ForgetTagsAround(const QWidget* view);

} // namespace vm
