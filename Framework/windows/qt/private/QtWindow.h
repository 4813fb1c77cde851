// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/windows/private/NativeWindow.h"

#include <QCoreApplication>
#include <QPointer>
#include <QWidget>
#include <algorithm>
#include <set>

/// A widget's link to the window of the framework that it is made for. It is a child of the widget, goes with
/// it, and is what other threads wake.
class WidgetLink final : public QObject {
public:
    /// `owner` may be null, for one that is set later.
    WidgetLink(QWidget& widget, NativeWindowOwner* owner) : QObject(&widget), m_owner(owner) {
        All().insert(this);
    }

    ~WidgetLink() override {
        All().erase(this);
        if (m_isLeft) --s_left;
        if (m_owner) m_owner->OnDestroyed();
    }

    void SetOwner(NativeWindowOwner* owner) { m_owner = owner; }
    QWidget& Widget() const { return *static_cast<QWidget*>(parent()); }

    /// Lets the owner go without a word, and deletes the widget. While it or a part of it has its owner at
    /// work, Qt still uses it: it is then hidden, and deleted when the owner has returned.
    void DeleteWidget() {
        m_owner = nullptr;
        if (!IsAtWork()) {
            delete parent();
            return;
        }
        m_isLeft = true;
        ++s_left;
        Widget().hide();
    }

    /// Calls for the owner, which may delete its window by what it does then. The widget lasts, unless a host
    /// deletes it.
    template <typename Call> void ForOwner(const Call& call) {
        if (!m_owner) return;
        const QPointer<WidgetLink> self(this);
        ++m_depth;
        call(*m_owner);
        if (!self) return;
        --m_depth;
        if (s_left > 0) DeleteLeft();
    }

    void Tell(UINT code) {
        ForOwner([=](NativeWindowOwner& owner) { owner.OnCommand(code); });
    }

    /// All that there are. Their widgets must not be there any more when the QApplication is gone, whoever
    /// holds them. The set itself stays to the end, for windows that the program destroys then.
    static std::set<WidgetLink*>& All() {
        static auto& links = *new std::set<WidgetLink*>;
        return links;
    }

    static QEvent::Type WakeEvent() {
        static const int type = QEvent::registerEventType();
        return static_cast<QEvent::Type>(type);
    }

protected:
    bool event(QEvent* event) override {
        if (event->type() != WakeEvent()) return QObject::event(event);
        ForOwner([](NativeWindowOwner& owner) { owner.OnWake(); });
        return true;
    }

private:
    // Whether an owner has not returned from a call, of this or of what is in the widget: dialogs over it,
    // too.
    bool IsAtWork() const {
        const auto isWithin = [this](const QObject* object) {
            while (object && object != parent()) object = object->parent();
            return object != nullptr;
        };
        return std::ranges::any_of(
            All(), [&](const WidgetLink* link) { return link->m_depth > 0 && isWithin(link); });
    }

    static void DeleteLeft() {
        for (const WidgetLink* const link : All())
            if (link->m_isLeft && !link->IsAtWork()) link->Widget().deleteLater();
    }

    NativeWindowOwner* m_owner;   // null when nobody is told
    int m_depth = 0;              // calls that the owner has not returned from
    bool m_isLeft = false;        // the widget waits for its end
    inline static int s_left = 0; // such links
};

/// A window of the framework, a control or a dialog, on a widget. `Native` is its interface.
template <typename Native, typename Widget = QWidget> class QtWindow : public Native {
public:
    /// Takes the widget, which is deleted with this unless it is a part of a dialog. `owner` may be null.
    QtWindow(Widget* widget, NativeWindowOwner* owner, bool isPart = false)
        : m_widget(widget), m_link(new WidgetLink(*widget, owner)), m_isPart(isPart) {}
    ~QtWindow() override {
        if (!m_widget) return;
        if (m_isPart)
            m_link->SetOwner(nullptr);
        else
            m_link->DeleteWidget();
    }
    QtWindow(const QtWindow&) = delete;
    QtWindow& operator=(const QtWindow&) = delete;

    void SetOwner(NativeWindowOwner& owner) override {
        if (m_widget) m_link->SetOwner(&owner);
    }
    void* Handle() const override { return static_cast<QWidget*>(m_widget.data()); }

    std::wstring Text() const override {
        return m_widget ? TextOf(*m_widget).toStdWString() : std::wstring();
    }
    void SetText(const std::wstring& text) override {
        if (m_widget) SetTextOf(*m_widget, QString::fromStdWString(text));
    }
    bool IsEnabled() const override { return m_widget && m_widget->isEnabled(); }
    void Enable(bool enable) override {
        if (m_widget) m_widget->setEnabled(enable);
    }
    void Focus() override {
        if (m_widget) m_widget->setFocus();
    }
    void Invalidate() override {
        if (m_widget) m_widget->update();
    }

    // Called between MessageQueue::Open() and Close() only, and so while the widget is there.
    bool Wake() override {
        QCoreApplication::postEvent(m_link, new QEvent(WidgetLink::WakeEvent()));
        return true;
    }

    WidgetLink& Link() const { return *m_link; } ///< while the widget is there

protected:
    Widget* Get() const { return m_widget.data(); } ///< null when others have deleted it

    /// What a signal of the widget tells the owner. The widget may outlive this.
    auto Teller(UINT code) const {
        return [link = m_link, code] { link->Tell(code); };
    }

private:
    virtual QString TextOf(const Widget& widget) const { return widget.windowTitle(); }
    virtual void SetTextOf(Widget& widget, const QString& text) { widget.setWindowTitle(text); }

    const QPointer<Widget> m_widget; // null when others have deleted it
    WidgetLink* const m_link;        // other threads must not ask the QPointer
    const bool m_isPart;
};
