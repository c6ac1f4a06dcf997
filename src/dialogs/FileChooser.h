// The toolkit's file dialog for one OPENFILENAME: what it is set to, what of the user's choice is
// refused, and what comes back.
#pragma once

#include <string>
#include <vector>

#include <QtWidgets/QFileDialog>

#include <vmcore/dialogs/commdlg.h>

#include "dialogs/fileFilter.h"

namespace vm {

class FileChooser : public QFileDialog {
public:
    FileChooser(QWidget* parent, const OPENFILENAME& record, bool isOpening);

    const std::vector<std::string>& Chosen() const { return m_chosen; } ///< paths, as bytes
    DWORD FilterIndex() const; ///< from 1; 0 without filters

protected:
    void accept() override;

private:
    void SetFilters(DWORD index);
    void Suggest();
    bool Navigates() const;
    bool Takes();
    std::string Completed(const std::string& path) const;
    /// After the message or question that stands between the user and this file.
    bool Takes(const std::string& path);
    bool Refuse(const std::string& path, const char* why);

    const OPENFILENAME& m_record;
    const bool m_isOpening;
    std::vector<FileFilter> m_filters;
    std::vector<std::string> m_chosen;
};

/// Runs it; false for Cancel and failures, whose number SetDialogError has.
bool RunFileDialog(OPENFILENAME* record, bool isOpening);

} // namespace vm
