// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/windows/ColorWell.h"
#include "Framework/windows/ComboBox.h"
#include "Framework/windows/Dialog.h"
#include "Framework/windows/ListCtrl.h"
#include "Framework/windows/SpinButtonCtrl.h"
#include "UtilityDLL/Export.h"
#include "UtilityDLL/contours/ContourDefinitionList.h"

#include <memory>
#include <string>

class ContourEditing;

/// The dialog for one contour: level, colour, line style and width, and whether it is labelled.
///
/// The level, in the chart's depth unit, is shown with two decimals, the width with up to six digits; its
/// arrows go by 0.1. What the user leaves as it is keeps its value to the last digit, but for a level that is
/// no finite number, which has to be written anew; a line type that the list does not have stays. Numbers are
/// written with a point before the decimals, whatever the locale. OK says at the field what is wrong with
/// one, and the dialog stays: letters, nothing, a comma, a number beyond a `double`, a width below 0 or
/// beyond a `float`.
class UTILITYDLL_API CEditContourDlg : public CDialog {
public:
    using Contour = ContourDefinitionList::ContourDefInfo; ///< what is edited

    /// The dialog for a copy of `contour`, over `parent`. DoModal() shows it.
    explicit CEditContourDlg(const Contour& contour, CWnd* parent = nullptr);
    ~CEditContourDlg() override;

    /// What it was given, and after OK what the user made of it.
    const Contour& Get() const { return m_contour; }

    const AFX_MSGMAP* GetMessageMap() const override { return GetThisMessageMap(); }
    static const AFX_MSGMAP* GetThisMessageMap(); ///< for maps of derived classes

protected:
    void DoDataExchange(CDataExchange* exchange) override;

private:
    void OnWidthStep();

    Contour m_contour;
    CComboBox m_lineStyle;
    CColorWell m_color;
    CSpinButtonCtrl m_widthSpin;
};

/// The dialog for the range of levels that contours are generated for. Its fields begin empty, and OK wants a
/// finite number in each, and an interval that makes no more than a million levels; whether they make a range
/// is asked of ContourDefinitionList::Generate().
class UTILITYDLL_API CContourGenerationDlg : public CDialog {
public:
    /// The dialog with empty fields, over `parent`. DoModal() shows it.
    explicit CContourGenerationDlg(CWnd* parent = nullptr);
    ~CContourGenerationDlg() override;

    /// What the user wrote, after OK; 0 before.
    /// @{
    double Lowest() const { return m_lowest; }
    double Highest() const { return m_highest; }
    double Interval() const { return m_interval; }
    /// @}

protected:
    void DoDataExchange(CDataExchange* exchange) override;

private:
    double m_lowest = 0;
    double m_highest = 0;
    double m_interval = 0;
};

/// The editor of a contour definition list and its file.
///
/// The list has a row for each contour, in its order. "Remove" is for all that are selected, "Edit" and a
/// double click for the first of them. An edit that gives a contour the level of another one takes it away,
/// and says so.
///
/// OK saves: to the path with the extension "cdf", or, without a path, where the user says. It asks before it
/// overwrites what was not read here: another file than the one that was opened, one that could not be read
/// or has more than its contours (other sections and keys, comments, contours behind a gap in the numbers),
/// or one that another program, or another editor, has changed since. When nothing could be saved the user is
/// told why, and the dialog closes with OK all the same; an empty list cannot be saved. Cancel saves nothing.
class UTILITYDLL_API CContourEditor : public CDialog {
public:
    /// Reads the file, whose title becomes the caption. Without a path the list begins empty, and the caption
    /// is "Contours". It begins empty as well where the file is not there yet, and OK makes it, or cannot be
    /// read, of which the user is told when the dialog is shown.
    explicit CContourEditor(const CString& path, CWnd* parent = nullptr);
    ~CContourEditor() override;

    /// As it is edited. It stays when the dialog is closed, with Cancel as well, and is what the dialog
    /// begins with when it is shown again.
    const ContourDefinitionList& List() const;

    /// Whether the dialog was closed with OK and the list is in a file. Where it is not after OK, the user
    /// was told why.
    bool HasSaved() const { return m_hasSaved; }

    const AFX_MSGMAP* GetMessageMap() const override { return GetThisMessageMap(); }
    static const AFX_MSGMAP* GetThisMessageMap(); ///< for maps of derived classes

protected:
    void OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;
    void OnOK() override;

    /// What the buttons do; OnEditContour() is for a double click in the list as well.
    /// @{
    void OnAddContour();
    void OnEditContour();
    void OnRemoveContour();
    void OnGenerateFromRange();
    void OnGenerateFromColorTable();
    /// @}

    void OnClickContourListCtrl();  ///< comes with a new selection
    void SetAddRemoveButtonState(); ///< lets the buttons be pressed that have something to do

private:
    /// Shows the list anew; the row of that level, if `select` and there is one, is selected.
    void UpdateContourList(double level, bool select);
    void SelectCountourInList(int position); // -1 for none

    // The message, unless the text is empty. A host may delete the editor meanwhile.
    void ShowFailure(const std::wstring& text);
    std::wstring AskForFile();

    const std::shared_ptr<ContourEditing> m_editing;
    bool m_hasSaved = false;
    CListCtrl m_contours;
    CButton m_remove;
    CButton m_edit;
};

namespace DLG {

/// Edits the contour definition file of that path, or with an empty path a new one, in a dialog without a
/// parent. True when it was closed with OK; false also where no dialog can be shown, for which
/// CContourEditor::DoModal() gives the reason.
UTILITYDLL_API bool EditContourList(const CString& path);

} // namespace DLG
