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
/// The level is shown with two decimals and the width with as many as it has. What the user leaves as it is
/// keeps its value to the last digit, and a line type that the list does not have stays.
class UTILITYDLL_API CEditContourDlg : public CDialog {
public:
    using Contour = ContourDefinitionList::ContourDefInfo;

    explicit CEditContourDlg(const Contour& contour, CWnd* parent = nullptr);
    ~CEditContourDlg() override;

    /// What it was given, and after OK what the user made of it.
    const Contour& Get() const { return m_contour; }

    const AFX_MSGMAP* GetMessageMap() const override { return GetThisMessageMap(); }
    static const AFX_MSGMAP* GetThisMessageMap();

protected:
    void DoDataExchange(CDataExchange* exchange) override;

private:
    void OnWidthStep();

    Contour m_contour;
    CComboBox m_lineStyle;
    CColorWell m_color;
    CSpinButtonCtrl m_widthSpin;
};

/// The dialog for the range of levels that contours are generated for.
class UTILITYDLL_API CContourGenerationDlg : public CDialog {
public:
    explicit CContourGenerationDlg(CWnd* parent = nullptr);
    ~CContourGenerationDlg() override;

    // After OK.
    double Lowest() const { return m_lowest; }
    double Highest() const { return m_highest; }
    double Interval() const { return m_interval; }

protected:
    void DoDataExchange(CDataExchange* exchange) override;

private:
    double m_lowest = 0;
    double m_highest = 0;
    double m_interval = 0;
};

/// The editor of a contour definition list and its file.
///
/// OK saves: to the path with the extension "cdf", or, without a path, where the user says. It asks before it
/// overwrites another file than the one that was opened, or one that another program has changed since. When
/// saving fails the user is told, and the dialog closes all the same. Cancel saves nothing.
class UTILITYDLL_API CContourEditor : public CDialog {
public:
    /// Without a path the list begins empty; a file that is not there yet is made by OK.
    explicit CContourEditor(const CString& path, CWnd* parent = nullptr);
    ~CContourEditor() override;

    /// As it is edited. It stays when the dialog is closed.
    const ContourDefinitionList& List() const;

    /// Whether the last OK wrote the list to a file. The user was told where it did not.
    bool HasSaved() const { return m_hasSaved; }

    const AFX_MSGMAP* GetMessageMap() const override { return GetThisMessageMap(); }
    static const AFX_MSGMAP* GetThisMessageMap();

protected:
    void OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;
    void OnOK() override;

    void OnAddContour();
    void OnEditContour(); // also on a double click in the list
    void OnRemoveContour();
    void OnGenerateFromRange();
    void OnGenerateFromColorTable();
    void OnClickContourListCtrl();
    void SetAddRemoveButtonState();

private:
    /// Shows the list anew; the row of that level, if `select` and there is one, is selected.
    void UpdateContourList(double level, bool select);
    void SelectCountourInList(int position); // -1 for none

    void ShowFailure(const std::wstring& text); // unless it is empty
    std::wstring AskForFile();

    const std::unique_ptr<ContourEditing> m_editing;
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
