// SPDX-License-Identifier: MIT
// worker-host [FOLDER [--quit]]: fingerprints the folder's files in a thread; --quit: starts and ends by
// itself
#include <Framework/windows/Wnd.h>
#include <UtilityDLL/runtime/Observer.h>
#include <UtilityDLL/runtime/Thread.h>
#include <UtilityDLL/settings/FileChecksum.h>

#include <QtWidgets>

const std::wstring kContext = L"fingerprints"; // subscribers hear of the end of the work here

// The work, one file a step.
struct Fingerprints : ProgThreadObject {
    QStringList files;
    qsizetype done = 0;
    unsigned int sum = 0;
    explicit Fingerprints(const QString& folder) {
        QDirIterator found(folder, QDir::Files, QDirIterator::Subdirectories);
        while (found.hasNext()) files << found.next();
    }
    unsigned int Run(volatile bool*) override {
        if (done == files.size()) return 2; // finished
        progText = files[done].toStdWString();
        sum = sum * 31 + FileChecksum(files[done].toStdWString(), FileChecksum::ALL_WORDS).Value();
        progress = float(++done) / float(files.size());
        return 1; // next step
    }
};

// Gets the message at the end of the work in the thread of the user interface, and tells all subscribers.
class EndWindow : public CWnd {
    LRESULT WindowProc(UINT message, WPARAM, LPARAM) override {
        if (message == Thread::END_MESSAGE) UTL::Observer::Get().Notify(kContext, 1);
        return 0;
    }
};

struct Window : QWidget, UTL::Subscriber {
    Window(const QString& folder, bool quit, CWnd& end) : m_folder(folder), m_quit(quit), m_work(folder) {
        setWindowTitle("Fingerprint of " + QDir(folder).absolutePath());
        auto* const rows = new QVBoxLayout(this);
        rows->addWidget(&m_bar);
        rows->addWidget(&m_text);
        rows->addWidget(&m_buttons);
        m_text.setFixedWidth(480);
        connect(m_start, &QPushButton::clicked, [this] { Start(); });
        connect(m_cancel, &QPushButton::clicked, [this] { m_thread.Stop(); });
        connect(&m_look, &QTimer::timeout,
                [this] { Show(true, QString::fromStdWString(m_work.GetProgText())); });
        UTL::Observer::Get().Subscribe(this, kContext);
        m_thread.SetCaller(&end);
        Show(false, "Ready");
        if (m_quit) Start();
    }
    ~Window() override { // the worker uses m_work to its end
        m_thread.Stop();
        m_thread.WaitForEnd();
    }
    void Start() {
        m_work = Fingerprints(m_folder); // idle: nobody else uses it
        Show(m_thread.Start(&m_work), "");
    }
    void OnNotify(int) override {
        const auto result = QString("%1 files: %2").arg(m_work.done).arg(m_work.sum, 8, 16, QChar('0'));
        Show(false, result);
        QTextStream(stdout) << result << Qt::endl;
        if (m_quit) QCoreApplication::quit();
    }
    void Show(bool busy, const QString& text) {
        m_start->setEnabled(!busy);
        m_cancel->setEnabled(busy);
        busy ? m_look.start(50) : m_look.stop();
        m_bar.setValue(int(m_work.GetProgress() * 100));
        m_text.setText(m_text.fontMetrics().elidedText(text, Qt::ElideMiddle, m_text.width()));
    }

    const QString m_folder;
    const bool m_quit; // with the end of the work
    QProgressBar m_bar;
    QLabel m_text;
    QDialogButtonBox m_buttons;
    QPushButton* const m_start = m_buttons.addButton("Start", QDialogButtonBox::ActionRole);
    QPushButton* const m_cancel = m_buttons.addButton("Cancel", QDialogButtonBox::ActionRole);
    QTimer m_look;
    Fingerprints m_work;
    Thread m_thread;
};

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    EndWindow end;
    if (const ErrorString made = end.Create(); !made) {
        QTextStream(stderr) << QString::fromStdWString(made.Text()) << Qt::endl;
        return 1;
    }
    Window window(application.arguments().value(1, "."), application.arguments().value(2) == "--quit", end);
    window.show();
    return application.exec();
}
