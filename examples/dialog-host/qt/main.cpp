// SPDX-License-Identifier: MIT
// dialog-host [--picture FILE.png]: a dialog of Qt that has controls of the library among its own; --picture:
// draws itself into the file instead of on the screen
#include <UtilityDLL/colors/ColorButton.h>
#include <UtilityDLL/text/FontCombo.h>

#include <QtWidgets>

QColor ColorOf(const ColorButton& button) {
    const unsigned long color = button.GetColor();
    return QColor(int(color & 0xFF), int(color >> 8 & 0xFF), int(color >> 16 & 0xFF));
}

class Dialog : public QDialog {
public:
    // Says what is missing, before anything else is called.
    ErrorString Create() {
        if (ErrorString made = m_face.Create(CBS_SORT); !made) return made;
        if (ErrorString made = m_text.Create(L""); !made) return made;
        if (ErrorString made = m_paper.Create(L""); !made) return made;
        m_face.FillCombo();
        m_text.SetColor(0x00783C14);
        m_paper.SetColor(0x00D2F0FA);

        // The handles are widgets like any other; these objects keep them, and go before the dialog does.
        setWindowTitle("Soundings");
        auto* const face = qobject_cast<QComboBox*>(Widget(m_face));
        auto* const rows = new QVBoxLayout(this);
        auto* const form = new QFormLayout;
        form->addRow("&Face:", face);
        form->addRow("&Size:", &m_size);
        form->addRow("&Text:", Widget(m_text));
        form->addRow("&Paper:", Widget(m_paper));
        rows->addLayout(form);
        rows->addWidget(&m_sample, 1);
        rows->addWidget(&m_close);
        form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
        m_sample.setAlignment(Qt::AlignCenter);
        m_sample.setAutoFillBackground(true);
        m_sample.setMargin(12);
        m_size.setRange(6, 48);
        m_size.setValue(16);
        m_size.setSuffix(" pt");
        face->setCurrentText("Liberation Sans");

        // What the user does to them is heard of as of any other.
        connect(face, &QComboBox::currentIndexChanged, this, &Dialog::Show);
        connect(&m_size, &QSpinBox::valueChanged, this, &Dialog::Show);
        for (const ColorButton* const button : {&m_text, &m_paper})
            connect(qobject_cast<QAbstractButton*>(Widget(*button)), &QAbstractButton::clicked, this,
                    &Dialog::Show);
        connect(&m_close, &QDialogButtonBox::rejected, this, &QDialog::reject);
        Show();
        return {};
    }

    int Draw(const QString& path) {
        if (!grab().save(path)) return 1;
        QTextStream(stdout) << "drawn with " << m_face.GetCount() << " faces to choose from" << Qt::endl;
        return 0;
    }

private:
    static QWidget* Widget(const CWnd& window) { return static_cast<QWidget*>(window.NativeHandle()); }

    // The sample as the controls are, and on each button the colour that it has.
    void Show() {
        for (ColorButton* const button : {&m_text, &m_paper})
            button->SetWindowTextW(ColorOf(*button).name().toStdWString().c_str());
        QPalette colors = m_sample.palette();
        colors.setColor(QPalette::WindowText, ColorOf(m_text));
        colors.setColor(QPalette::Window, ColorOf(m_paper));
        m_sample.setPalette(colors);
        const std::wstring face = m_face.GetLBText(m_face.GetCurSel()).String();
        m_sample.setFont(QFont(QString::fromStdWString(face), m_size.value()));
    }

    QSpinBox m_size;
    QLabel m_sample{"12.5   Sand, Shells"};
    QDialogButtonBox m_close{QDialogButtonBox::Close};
    FontCombo m_face;
    ColorButton m_text, m_paper;
};

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    Dialog dialog;
    if (const ErrorString made = dialog.Create(); !made) {
        QTextStream(stderr) << QString::fromStdWString(made.Text()) << Qt::endl;
        return 1;
    }
    if (application.arguments().value(1) == "--picture") return dialog.Draw(application.arguments().value(2));
    return dialog.exec();
}
