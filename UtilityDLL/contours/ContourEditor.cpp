// SPDX-License-Identifier: MIT
#include "UtilityDLL/contours/ContourEditor.h"

#include "Framework/windows/ComboBox.h"
#include "Framework/windows/DpiCor.h"
#include "Framework/windows/FileDialog.h"
#include "UtilityDLL/contours/private/ContourEditing.h"
#include "UtilityDLL/contours/private/NumberField.h"
#include "VelmBase/FileName.h"
#include "VelmBase/FormatString.h"
#include "VelmConfigure/DataSearch.h"

#include <algorithm>
#include <limits>

namespace {

enum Control : UINT {
    LIST = 100,
    ADD,
    REMOVE,
    EDIT,
    RANGE,
    COLOR_TABLE,
    LEVEL,
    COLOR,
    LINE_STYLE,
    SHOW_LABELS,
    LINE_WIDTH, // and its arrows
    LINE_WIDTH_SPIN,
    LOWEST,
    HIGHEST,
    INTERVAL,
};

DialogItem Text(DialogItem::Kind kind, UINT id, TextId text) { return {kind, id, LoadText(text)}; }

// OK and Cancel, at the right end.
DialogItem ClosingButtons() {
    return {DialogItem::ROW,
            0,
            {},
            {{DialogItem::SPACE},
             Text(DialogItem::DEFAULT_BUTTON, IDOK, TextId::DIALOG_OK),
             Text(DialogItem::PUSH_BUTTON, IDCANCEL, TextId::DIALOG_CANCEL)}};
}

void AddField(DialogItem& form, TextId label, DialogItem field) {
    form.items.push_back(Text(DialogItem::LABEL, 0, label));
    form.items.push_back(std::move(field));
}

DialogItem PropertiesContent() {
    DialogItem form = {DialogItem::FORM};
    AddField(form, TextId::CONTOUR_LEVEL, {DialogItem::EDIT, LEVEL});
    AddField(form, TextId::CONTOUR_COLOR,
             Text(DialogItem::COLOR_WELL, COLOR, TextId::CONTOUR_CLICK_TO_CHANGE));
    AddField(form, TextId::CONTOUR_LINE_STYLE, {DialogItem::DROP_DOWN_LIST, LINE_STYLE});
    AddField(form, TextId::CONTOUR_LINE_WIDTH, {DialogItem::SPIN_EDIT, LINE_WIDTH});
    AddField(form, TextId::CONTOUR_SHOW_LABELS, {DialogItem::CHECK_BOX, SHOW_LABELS});
    return {DialogItem::COLUMN, 0, {}, {std::move(form), ClosingButtons()}};
}

DialogItem GenerationContent() {
    DialogItem form = {DialogItem::FORM};
    AddField(form, TextId::GENERATE_LOWEST, {DialogItem::EDIT, LOWEST});
    AddField(form, TextId::GENERATE_HIGHEST, {DialogItem::EDIT, HIGHEST});
    AddField(form, TextId::GENERATE_INTERVAL, {DialogItem::EDIT, INTERVAL});
    DialogItem range = Text(DialogItem::GROUP, 0, TextId::GENERATE_RANGE);
    range.items.push_back(std::move(form));
    return {DialogItem::COLUMN, 0, {}, {std::move(range), ClosingButtons()}};
}

DialogItem EditorContent() {
    DialogItem buttons = {DialogItem::COLUMN};
    buttons.items.push_back(Text(DialogItem::PUSH_BUTTON, ADD, TextId::CONTOURS_ADD));
    for (DialogItem button : {Text(DialogItem::PUSH_BUTTON, REMOVE, TextId::CONTOURS_REMOVE),
                              Text(DialogItem::PUSH_BUTTON, EDIT, TextId::CONTOURS_EDIT)}) {
        button.isDisabled = true;
        buttons.items.push_back(std::move(button));
    }
    DialogItem sources = Text(DialogItem::GROUP, 0, TextId::CONTOURS_GENERATE_FROM);
    sources.items = {Text(DialogItem::PUSH_BUTTON, RANGE, TextId::CONTOURS_RANGE),
                     Text(DialogItem::PUSH_BUTTON, COLOR_TABLE, TextId::CONTOURS_COLOR_TABLE)};
    buttons.items.push_back(std::move(sources));
    buttons.items.push_back({DialogItem::SPACE});
    DialogItem upper = {DialogItem::ROW};
    upper.items = {Text(DialogItem::LIST_VIEW, LIST, TextId::CONTOURS_CAPTION), std::move(buttons)};
    return {DialogItem::COLUMN, 0, {}, {std::move(upper), ClosingButtons()}};
}

// The value is taken when the user left a number.
void ExchangeNumber(CDataExchange* exchange, UINT id, double& value, const NumberField& field) {
    CString text = field.shown;
    DDX_Text(exchange, id, text);
    if (!exchange->m_bSaveAndValidate || exchange->HasFailed()) return;
    const FieldNumber number = field.Read(text.String());
    if (number.fault)
        exchange->Fail(id, LoadText(*number.fault));
    else
        value = number.value;
}

std::wstring DataFolder() { return DataSearch::GetDataSearch().GetFilePath(DataSearch::CHOICE_LISTS); }

CString Filter(TextId name, const wchar_t* pattern) { return LoadText(name) + std::wstring(pattern); }

// Whether the user closed the dialog with OK, and the editor, whose part `editing` is, was not deleted
// meanwhile.
bool IsConfirmed(auto& dialog, const std::weak_ptr<ContourEditing>& editing) {
    return dialog.DoModal() == IDOK && !editing.expired();
}

} // namespace

CEditContourDlg::CEditContourDlg(const Contour& contour, CWnd* parent)
    : CDialog(LoadText(TextId::CONTOUR_CAPTION), PropertiesContent(), parent), m_contour(contour) {}

CEditContourDlg::~CEditContourDlg() = default;

void CEditContourDlg::DoDataExchange(CDataExchange* exchange) {
    DDX_Control(exchange, COLOR, m_color);
    DDX_Control(exchange, LINE_STYLE, m_lineStyle);
    DDX_Control(exchange, LINE_WIDTH_SPIN, m_widthSpin);
    if (m_lineStyle.GetCount() == 0) {
        const FormatString styles(LoadText(TextId::CONTOUR_LINE_STYLES), L',');
        for (int i = 0; i < styles.NumItems(); ++i) m_lineStyle.AddString(styles[i]);
    }
    Contour contour = m_contour;
    ExchangeNumber(exchange, LEVEL, contour.level, LevelField(contour.level));
    auto width = static_cast<double>(contour.lineWidth);
    ExchangeNumber(exchange, LINE_WIDTH, width, WidthField(contour.lineWidth));
    contour.lineWidth = static_cast<float>(width);
    int lineStyle = contour.lineType;
    DDX_CBIndex(exchange, LINE_STYLE, lineStyle);
    if (lineStyle >= 0) contour.lineType = lineStyle;
    DDX_Check(exchange, SHOW_LABELS, contour.annotate);
    if (exchange->m_bSaveAndValidate)
        contour.trueColor = m_color.GetColor();
    else
        m_color.SetColor(contour.trueColor);
    if (!exchange->HasFailed()) m_contour = contour;
}

const AFX_MSGMAP* CEditContourDlg::GetThisMessageMap() {
    static const AFX_MSGMAP_ENTRY entries[] = {
        {WM_COMMAND, UDN_DELTAPOS, LINE_WIDTH_SPIN, Handler(&CEditContourDlg::OnWidthStep)}, {}};
    static const AFX_MSGMAP map = {&CDialog::GetThisMessageMap, entries};
    return &map;
}

void CEditContourDlg::OnWidthStep() {
    CControl* const field = GetDlgItem(LINE_WIDTH);
    field->SetWindowTextW(StepWidth(field->GetWindowTextW().String(), m_widthSpin.GetDelta()));
}

CContourGenerationDlg::CContourGenerationDlg(CWnd* parent)
    : CDialog(LoadText(TextId::GENERATE_CAPTION), GenerationContent(), parent) {}

CContourGenerationDlg::~CContourGenerationDlg() = default;

void CContourGenerationDlg::DoDataExchange(CDataExchange* exchange) {
    ExchangeNumber(exchange, LOWEST, m_lowest, {});
    ExchangeNumber(exchange, HIGHEST, m_highest, {});
    ExchangeNumber(exchange, INTERVAL, m_interval, {});
    if (!exchange->m_bSaveAndValidate || exchange->HasFailed()) return;
    if (const auto fault = IntervalFault(m_lowest, m_highest, m_interval))
        exchange->Fail(INTERVAL, LoadText(*fault));
}

CContourEditor::CContourEditor(const CString& path, CWnd* parent)
    : CDialog(path.IsEmpty() ? CString(LoadText(TextId::CONTOURS_CAPTION))
                             : CString(GetTitleFromPath(path.String())),
              EditorContent(), parent),
      m_editing(std::make_shared<ContourEditing>(path.String())) {}

CContourEditor::~CContourEditor() = default;

const ContourDefinitionList& CContourEditor::List() const { return m_editing->List(); }

const AFX_MSGMAP* CContourEditor::GetThisMessageMap() {
    static const AFX_MSGMAP_ENTRY entries[] = {
        {WM_COMMAND, BN_CLICKED, ADD, Handler(&CContourEditor::OnAddContour)},
        {WM_COMMAND, BN_CLICKED, REMOVE, Handler(&CContourEditor::OnRemoveContour)},
        {WM_COMMAND, BN_CLICKED, EDIT, Handler(&CContourEditor::OnEditContour)},
        {WM_COMMAND, NM_DBLCLK, LIST, Handler(&CContourEditor::OnEditContour)},
        {WM_COMMAND, BN_CLICKED, RANGE, Handler(&CContourEditor::OnGenerateFromRange)},
        {WM_COMMAND, BN_CLICKED, COLOR_TABLE, Handler(&CContourEditor::OnGenerateFromColorTable)},
        {WM_COMMAND, LVN_ITEMCHANGED, LIST, Handler(&CContourEditor::OnClickContourListCtrl)},
        {}};
    static const AFX_MSGMAP map = {&CDialog::GetThisMessageMap, entries};
    return &map;
}

void CContourEditor::DoDataExchange(CDataExchange* exchange) {
    DDX_Control(exchange, LIST, m_contours);
    DDX_Control(exchange, REMOVE, m_remove);
    DDX_Control(exchange, EDIT, m_edit);
}

void CContourEditor::OnInitDialog() {
    m_hasSaved = false;
    CDialog::OnInitDialog();
    constexpr TextId headings[] = {TextId::CONTOURS_COLUMN_LEVEL, TextId::CONTOURS_COLUMN_ANNOTATION,
                                   TextId::CONTOURS_COLUMN_WIDTH, TextId::CONTOURS_COLUMN_TYPE};
    int column = 0;
    for (const TextId heading : headings) m_contours.InsertColumn(column++, LoadText(heading), DpiCor(70));
    UpdateContourList(0, false);
    ShowFailure(m_editing->OpeningFault());
}

void CContourEditor::UpdateContourList(double level, bool select) {
    const ContourDefinitionList& list = m_editing->List();
    CImageList swatches(DpiCor(16), DpiCor(16));
    for (int i = 0; i < list.NumContours(); ++i) swatches.Add(list[i].trueColor);
    m_contours.SetRedraw(false);
    m_contours.DeleteAllItems();
    m_contours.SetImageList(swatches);
    for (int i = 0; i < list.NumContours(); ++i) {
        const std::vector<std::wstring> texts = ContourEditing::Row(list[i]);
        m_contours.InsertItem(i, texts[0], swatches.Add(list[i].trueColor));
        for (int column = 1; column < static_cast<int>(texts.size()); ++column)
            m_contours.SetItemText(i, column, texts[static_cast<std::size_t>(column)]);
    }
    m_contours.SetRedraw(true);
    SelectCountourInList(select ? m_editing->PositionOf(level) : -1);
}

void CContourEditor::SelectCountourInList(int position) {
    m_contours.SelectOnly(position);
    SetAddRemoveButtonState();
}

void CContourEditor::SetAddRemoveButtonState() {
    const bool canChange = ContourEditing::CanChange(m_contours.GetSelectedItems());
    m_remove.EnableWindow(canChange);
    m_edit.EnableWindow(canChange);
}

void CContourEditor::OnClickContourListCtrl() { SetAddRemoveButtonState(); }

void CContourEditor::ShowFailure(const std::wstring& text) {
    if (!text.empty()) MessageBoxW(text, LoadText(TextId::CONTOUR_ERROR_CAPTION), MB_OK | MB_ICONERROR);
}

void CContourEditor::OnAddContour() {
    CEditContourDlg dialog({}, this);
    if (!IsConfirmed(dialog, m_editing)) return;
    if (const auto failure = m_editing->Add(dialog.Get()))
        ShowFailure(LoadText(*failure));
    else
        UpdateContourList(dialog.Get().level, true);
}

void CContourEditor::OnEditContour() {
    const int row = ContourEditing::RowToEdit(m_contours.GetSelectedItems());
    if (row == -1) return;
    CEditContourDlg dialog(m_editing->List()[row], this);
    if (!IsConfirmed(dialog, m_editing)) return;
    const auto failure = m_editing->Edit(row, dialog.Get());
    // After a failure as well: the contour is gone then, and the rows would stand for others.
    UpdateContourList(dialog.Get().level, true);
    if (failure) ShowFailure(LoadText(*failure));
}

void CContourEditor::OnRemoveContour() {
    const std::vector<int> selected = m_contours.GetSelectedItems();
    const int next = m_editing->Remove(selected);
    m_contours.SetRedraw(false);
    for (const auto& [first, count] : ContourEditing::RunsFromTheLast(selected))
        m_contours.DeleteItems(first, count);
    m_contours.SetRedraw(true);
    SelectCountourInList(next);
}

void CContourEditor::OnGenerateFromRange() {
    CContourGenerationDlg dialog(this);
    if (!IsConfirmed(dialog, m_editing)) return;
    const auto failure = m_editing->GenerateFromRange(dialog.Lowest(), dialog.Highest(), dialog.Interval());
    UpdateContourList(0, false);
    if (failure) ShowFailure(LoadText(*failure));
}

void CContourEditor::OnGenerateFromColorTable() {
    CFileDialog dialog(true, {}, {}, OFN_HIDEREADONLY | OFN_FILEMUSTEXIST,
                       Filter(TextId::CONTOURS_COLOR_TABLE_FILES, L"|*.col||"), this);
    dialog.SetInitialFolder(DataFolder());
    if (!IsConfirmed(dialog, m_editing)) return;
    const auto failure = m_editing->GenerateFromColorTable(dialog.GetPathName().String());
    UpdateContourList(0, false);
    if (failure) ShowFailure(LoadText(*failure));
}

void CContourEditor::OnOK() {
    const std::weak_ptr<ContourEditing> editing = m_editing;
    const std::wstring question = m_editing->Question();
    if (!question.empty() && MessageBoxW(question, GetWindowTextW(), MB_YESNO | MB_ICONQUESTION) != IDYES)
        return;
    if (editing.expired()) return;
    const std::wstring path = m_editing->Path().empty() ? AskForFile() : m_editing->Target();
    if (editing.expired()) return;
    const std::wstring failure = m_editing->Save(path);
    m_hasSaved = failure.empty();
    ShowFailure(failure);
    if (!editing.expired()) EndDialog(IDOK);
}

// Empty when the user chose none.
std::wstring CContourEditor::AskForFile() {
    CFileDialog dialog(false, L"cdf", {}, OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT,
                       Filter(TextId::CONTOURS_DEFINITION_FILES, L"|*.cdf||"), this);
    dialog.SetInitialFolder(DataFolder());
    return dialog.DoModal() == IDOK ? dialog.GetPathName().String() : std::wstring();
}

bool DLG::EditContourList(const CString& path) {
    CContourEditor editor(path);
    return editor.DoModal() == IDOK;
}
