#include "Framework/windows/private/NativeWindow.h"

#include "Framework/windows/private/WindowModule.h"

#include <QApplication>
#include <QEvent>
#include <QPointer>
#include <QThread>
#include <QWidget>
#include <set>

namespace {

class MessageWidget;

// All that there are. They must not be there any more when the QApplication is gone, whoever holds them. The
// set itself stays to the end, for windows that the program destroys then.
std::set<MessageWidget*>& Widgets() {
    static auto& widgets = *new std::set<MessageWidget*>;
    return widgets;
}

QEvent::Type WakeEvent() {
    static const int type = QEvent::registerEventType();
    return static_cast<QEvent::Type>(type);
}

class MessageWidget final : public QWidget {
public:
    explicit MessageWidget(NativeWindowOwner& owner) : m_owner(&owner) { Widgets().insert(this); }

    ~MessageWidget() override {
        Widgets().erase(this);
        if (m_owner) m_owner->OnDestroyed();
    }

    /// Goes without a word to the owner; a little later when it is just handling an event.
    void Leave() {
        m_owner = nullptr;
        if (m_depth == 0) {
            delete this;
            return;
        }
        hide();
        deleteLater();
    }

protected:
    bool event(QEvent* event) override {
        if (event->type() != WakeEvent()) return QWidget::event(event);
        if (!m_owner) return true;
        const QPointer<MessageWidget> self(this); // what it does now may delete it
        ++m_depth;
        m_owner->OnWake();
        if (self) --m_depth;
        return true;
    }

private:
    NativeWindowOwner* m_owner; // null when it has left
    int m_depth = 0;            // events that it is handling
};

void DeleteWidgets() {
    while (!Widgets().empty()) delete *Widgets().begin();
}

// Qt forgets its routines when it has called them: the next QApplication needs them again.
void DeleteWidgetsWith(const QApplication* application) {
    static QPointer<const QApplication> known;
    if (known == application) return;
    known = application;
    qAddPostRoutine(&DeleteWidgets);
}

class QtWindow final : public NativeWindow {
public:
    explicit QtWindow(NativeWindowOwner& owner) : m_widget(new MessageWidget(owner)) {}
    ~QtWindow() override {
        if (m_widget) m_widget->Leave();
    }

    void* Handle() const override { return static_cast<QWidget*>(m_widget.data()); }

    // Called between MessageQueue::Open() and Close() only, and so while the widget is there.
    bool Wake() override {
        QCoreApplication::postEvent(m_receiver, new QEvent(WakeEvent()));
        return true;
    }

private:
    const QPointer<MessageWidget> m_widget;     // null when others have deleted it
    MessageWidget* const m_receiver = m_widget; // the same for other threads, which must not ask the QPointer
};

ErrorString MakeWindow(NativeWindowOwner& owner, std::unique_ptr<NativeWindow>& window) {
    const auto* const application = qobject_cast<QApplication*>(QCoreApplication::instance());
    if (!application || QCoreApplication::closingDown())
        return L"Windows cannot be made: there is no QApplication";
    if (QThread::currentThread() != application->thread())
        return L"Windows can be made by the thread of the QApplication only";
    DeleteWidgetsWith(application);
    window = std::make_unique<QtWindow>(owner);
    return {};
}

} // namespace

extern "C" __attribute__((visibility("default"))) const WindowModule FrameworkWindowsModule;
const WindowModule FrameworkWindowsModule = {FRAMEWORK_VERSION, &MakeWindow};
