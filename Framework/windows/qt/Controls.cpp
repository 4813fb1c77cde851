// SPDX-License-Identifier: MIT
#include "Framework/windows/qt/private/Controls.h"

#include "Framework/windows/private/WindowModule.h"
#include "Framework/windows/qt/private/Swatch.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QToolTip>
#include <algorithm>

namespace {

/// Draws on a widget; see PaintTarget.
class WidgetTarget final : public PaintTarget {
public:
    explicit WidgetTarget(QPainter& painter) : m_painter(painter) {}

    void Fill(const RECT& rectangle, COLORREF color) override {
        const QRect place(QPoint(rectangle.left, rectangle.top),
                          QPoint(rectangle.right - 1, rectangle.bottom - 1));
        if (place.isValid()) m_painter.fillRect(place, ColorOf(color)); // Qt would fill to the other side
    }

    void Write(int x, int y, std::wstring_view text, COLORREF color, COLORREF background) override {
        const SIZE extent = Extent(text);
        m_painter.fillRect(x, y, extent.cx, extent.cy, ColorOf(background));
        m_painter.setPen(ColorOf(color));
        m_painter.drawText(x, y + m_painter.fontMetrics().ascent(), TextOf(text));
    }

    SIZE Extent(std::wstring_view text) const override {
        const QFontMetrics metrics = m_painter.fontMetrics();
        return {metrics.horizontalAdvance(TextOf(text)), metrics.height()};
    }

private:
    static QString TextOf(std::wstring_view text) {
        return QString::fromWCharArray(text.data(), static_cast<qsizetype>(text.size()));
    }

    QPainter& m_painter;
};

class DrawnButton final : public QPushButton {
public:
    DrawnButton(QWidget* parent, const PaintContexts& contexts) : QPushButton(parent), m_contexts(contexts) {}
    void SetLink(WidgetLink& link) { m_link = &link; }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        WidgetTarget target(painter);
        const HDC dc = m_contexts.open(target);
        if (!dc) return;
        DRAWITEMSTRUCT item = {};
        item.CtlType = ODT_BUTTON;
        item.itemAction = ODA_DRAWENTIRE;
        item.itemState =
            (isDown() ? ODS_SELECTED : 0) | (isEnabled() ? 0 : ODS_DISABLED) | (hasFocus() ? ODS_FOCUS : 0);
        item.hwndItem = reinterpret_cast<HWND>(static_cast<QWidget*>(this));
        item.hDC = dc;
        item.rcItem = {0, 0, width(), height()};
        if (m_link) m_link->ForOwner([&](NativeWindowOwner& owner) { owner.OnDrawItem(item); });
        m_contexts.close(dc);
    }

    // It is for no dialog to choose as the button for Enter everywhere, and so does not get that key by Qt.
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
            click();
        else
            QPushButton::keyPressEvent(event);
    }

private:
    const PaintContexts m_contexts;
    QPointer<WidgetLink> m_link;
};

// Under an edit field, where that goes; screen readers know it as the field's description.
class Hint final : public QLabel {
public:
    Hint(QWidget& field, QLineEdit& edit, const QString& text) : QLabel(&field, Qt::ToolTip), m_field(field) {
        setObjectName("hint");
        setTextFormat(Qt::PlainText);
        setText(text);
        setMargin(style()->pixelMetric(QStyle::PM_ToolTipLabelFrameWidth, nullptr, this) + 4);
        setFrameStyle(QFrame::Box);
        setPalette(QToolTip::palette());
        setForegroundRole(QPalette::ToolTipText);
        setBackgroundRole(QPalette::ToolTipBase);
        setAttribute(Qt::WA_DeleteOnClose);
        field.setAccessibleDescription(text);
        field.installEventFilter(this);
        field.window()->installEventFilter(this);
        connect(&edit, &QLineEdit::textChanged, this, &QWidget::close);
        Place();
        show();
        QAccessibleEvent event(&field, QAccessible::Alert);
        QAccessible::updateAccessibility(&event);
    }

protected:
    bool eventFilter(QObject* object, QEvent* event) override {
        const bool isField = object == &m_field;
        if (isField && (event->type() == QEvent::FocusOut || event->type() == QEvent::Hide)) close();
        if (event->type() == QEvent::Move || event->type() == QEvent::Resize) Place();
        return QLabel::eventFilter(object, event);
    }
    void closeEvent(QCloseEvent* event) override {
        m_field.setAccessibleDescription({});
        QLabel::closeEvent(event);
    }

private:
    // Above the field where there is no room under it.
    void Place() {
        adjustSize();
        const QRect screen = m_field.screen()->availableGeometry();
        QPoint place = m_field.mapToGlobal(QPoint(0, m_field.height() + 2));
        if (place.y() + height() > screen.bottom())
            place.setY(m_field.mapToGlobal(QPoint(0, -2)).y() - height());
        place.setX(std::max(screen.left(), std::min(place.x(), screen.right() - width())));
        move(place);
    }

    QWidget& m_field; // which this is a part of
};

void ShowHintAt(QWidget& field, QLineEdit& edit, const QString& text) {
    for (QLabel* const before : field.findChildren<QLabel*>("hint")) before->close();
    new Hint(field, edit, text); // deletes itself
}

} // namespace

QtButton::QtButton(QAbstractButton* button, NativeWindowOwner* owner, bool isPart)
    : QtWindow(button, owner, isPart) {
    QObject::connect(button, &QAbstractButton::clicked, &Link(), Teller(BN_CLICKED));
}

void QtButton::SetSwatch(COLORREF color) {
    if (!Get()) return;
    const QSize size = Get()->iconSize();
    Get()->setIcon(Swatch(color, size.width(), size.height(), Get()->devicePixelRatioF()));
}

QtEdit::QtEdit(QLineEdit* edit) : QtWindow(edit, nullptr, true) {
    QObject::connect(edit, &QLineEdit::textChanged, &Link(), Teller(EN_CHANGE));
}

void QtEdit::Enable(bool enable) {
    if (Get()) Field().setEnabled(enable);
}

void QtEdit::FocusAndSelect() {
    if (!Get()) return;
    Get()->setFocus();
    Get()->selectAll();
}

void QtEdit::ShowHint(const std::wstring& text) {
    if (Get()) ShowHintAt(Field(), *Get(), QString::fromStdWString(text));
}

QWidget& QtEdit::Field() const {
    auto* const spin = qobject_cast<QAbstractSpinBox*>(Get()->parentWidget());
    return spin ? static_cast<QWidget&>(*spin) : *Get();
}

QtComboBox::QtComboBox(QComboBox* box, NativeWindowOwner* owner, bool isSorted, bool isPart)
    : QtWindow(box, owner, isPart), m_isSorted(isSorted) {
    box->setInsertPolicy(QComboBox::NoInsert);
    QObject::connect(box, &QComboBox::activated, &Link(), Teller(CBN_SELCHANGE));
}

int QtComboBox::Add(const std::wstring& text) {
    if (!Get()) return -1;
    const QString added = QString::fromStdWString(text);
    int position = Count();
    if (m_isSorted) { // behind all that do not come after it
        int first = 0;
        while (first < position) {
            const int middle = first + (position - first) / 2;
            if (added.compare(Get()->itemText(middle), Qt::CaseInsensitive) < 0)
                position = middle;
            else
                first = middle + 1;
        }
    }
    const int selected = Get()->currentIndex();
    Get()->insertItem(position, added);
    if (selected < 0) Get()->setCurrentIndex(-1); // Qt selects the first that is added
    return position;
}

std::wstring QtComboBox::TextAt(int position) const {
    return Get() ? Get()->itemText(position).toStdWString() : std::wstring();
}

std::unique_ptr<NativeWindow> MakeDrawn(NativeWindowOwner& owner, const std::wstring& caption,
                                        QWidget* parent, const PaintContexts& contexts) {
    auto* const button = new DrawnButton(parent, contexts);
    button->setText(QString::fromStdWString(caption));
    button->setAutoDefault(false);
    auto native = std::make_unique<QtButton>(button, &owner, false);
    button->SetLink(native->Link());
    return native;
}
