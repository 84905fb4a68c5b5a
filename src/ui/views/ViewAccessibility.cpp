#include "ui/views/ViewAccessibility.h"

#include "ui/theme/FireText.h"
#include "ui/theme/ForgeToggle.h"
#include "ui/viewmodels/SessionRowText.h"
#include "ui/views/ElidedLabel.h"
#include "ui/views/FloatingChipHeader.h"
#include "ui/views/FloatingChipView.h"
#include "ui/views/QtText.h"
#include "ui/views/SessionRowView.h"
#include "ui/views/SessionSectionView.h"

#include <QAccessibleWidget>
#include <chrono>
#include <mutex>

namespace tovrin::ViewAccessibility {
namespace {

// Badge, title and subtitle are read out as one name, so the row has no children of its own; the
// hover buttons' work is offered as further actions.
class RowItem : public QAccessibleWidget {
public:
    explicit RowItem(SessionRowView* row) : QAccessibleWidget(row, QAccessible::ListItem) {}

    QString text(QAccessible::Text kind) const override {
        const AgentSession& session = row()->session();
        if (kind == QAccessible::Name)
            return QString::fromStdString(
                SessionRowText::accessibleName(session, std::chrono::system_clock::now()));
        if (kind == QAccessible::Description && session.reason)
            return QString::fromStdString(*session.reason);
        return QAccessibleWidget::text(kind);
    }
    int childCount() const override { return 0; }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }

    QStringList actionNames() const override {
        return QStringList{pressAction(), qText(SessionRowText::revealName),
                           qText(SessionRowText::hideName)} +
               QAccessibleWidget::actionNames();
    }
    void doAction(const QString& action) override {
        if (action == pressAction()) {
            row()->activate();
        } else if (action == qText(SessionRowText::revealName)) {
            row()->reveal();
        } else if (action == qText(SessionRowText::hideName)) {
            row()->dismiss();
        } else {
            QAccessibleWidget::doAction(action);
        }
    }
    QStringList keyBindingsForAction(const QString& action) const override {
        if (action == pressAction()) return {QStringLiteral("Return")};
        return QAccessibleWidget::keyBindingsForAction(action);
    }

private:
    SessionRowView* row() const { return static_cast<SessionRowView*>(widget()); }
};

// The heading and its dot are said by the list's name; its children are the rows alone.
class SectionList : public QAccessibleWidget {
public:
    explicit SectionList(SessionSectionView* section) : QAccessibleWidget(section, QAccessible::List) {}

    QString text(QAccessible::Text kind) const override {
        if (kind == QAccessible::Name) return section()->title();
        return QAccessibleWidget::text(kind);
    }
    int childCount() const override { return static_cast<int>(section()->rows().size()); }
    QAccessibleInterface* child(int index) const override {
        const auto rows = section()->rows();
        if (index < 0 || index >= static_cast<int>(rows.size())) return nullptr;
        return QAccessible::queryAccessibleInterface(rows[static_cast<std::size_t>(index)]);
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        const auto rows = section()->rows();
        for (std::size_t i = 0; i < rows.size(); ++i) {
            if (child && child->object() == rows[i]) return static_cast<int>(i);
        }
        return -1;
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        for (SessionRowView* row : section()->rows()) {
            if (row->isVisible() && QRect(row->mapToGlobal(QPoint()), row->size()).contains(x, y))
                return QAccessible::queryAccessibleInterface(row);
        }
        return nullptr;
    }

private:
    SessionSectionView* section() const { return static_cast<SessionSectionView*>(widget()); }
};

// A tap on the header unfolds the chip; assistive tools press it as a button that expands.
class ChipHeaderButton : public QAccessibleWidget {
public:
    explicit ChipHeaderButton(FloatingChipHeader* header) : QAccessibleWidget(header, QAccessible::Button) {}

    QString text(QAccessible::Text kind) const override {
        if (kind == QAccessible::Name) return QString::fromStdString(header()->content().summary);
        return QAccessibleWidget::text(kind);
    }
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        if (header()->content().chevron) {
            const auto* chip = dynamic_cast<const FloatingChipView*>(header()->parentWidget());
            const bool expanded = chip && chip->expanded();
            state.expandable = true;
            state.expanded = expanded;
            state.collapsed = !expanded;
        }
        return state;
    }
    QStringList actionNames() const override {
        return QStringList{pressAction()} + QAccessibleWidget::actionNames();
    }
    void doAction(const QString& action) override {
        if (action != pressAction()) return QAccessibleWidget::doAction(action);
        if (header()->onActivate) header()->onActivate();
    }

private:
    FloatingChipHeader* header() const { return static_cast<FloatingChipHeader*>(widget()); }
};

// Qt's own reading of a button toggles it without a click, and our switches act on clicks only (a state
// set from a setting must not be written back): here both actions click, as a pointer would.
class Switch : public QAccessibleWidget {
public:
    explicit Switch(ForgeToggle* toggle) : QAccessibleWidget(toggle, QAccessible::CheckBox) {}

    QString text(QAccessible::Text kind) const override {
        if (kind == QAccessible::Name && widget()->accessibleName().isEmpty()) return toggle()->text();
        return QAccessibleWidget::text(kind);
    }
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.checkable = true;
        state.checked = toggle()->isChecked();
        return state;
    }
    QStringList actionNames() const override { return {pressAction(), toggleAction()}; }
    void doAction(const QString& action) override {
        if ((action == pressAction() || action == toggleAction()) && toggle()->isEnabled()) toggle()->click();
    }

private:
    ForgeToggle* toggle() const { return static_cast<ForgeToggle*>(widget()); }
};

// Lines the views draw themselves: an ElidedLabel reads as its whole text, however it is cut on
// screen; others as the name their host gave them.
class DrawnText : public QAccessibleWidget {
public:
    explicit DrawnText(QWidget* line) : QAccessibleWidget(line, QAccessible::StaticText) {}

    QString text(QAccessible::Text kind) const override {
        if (kind == QAccessible::Name && widget()->accessibleName().isEmpty()) {
            if (const auto* label = dynamic_cast<const ElidedLabel*>(widget())) return label->text();
        }
        return QAccessibleWidget::text(kind);
    }
};

QAccessibleInterface* describe(const QString& className, QObject* object) {
    // Qt reads a plain top-level widget as a nameless pane; tools look for windows (frames) by title.
    if (className == QLatin1String("QWidget") && object->isWidgetType() &&
        static_cast<QWidget*>(object)->isWindow())
        return new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::Window);
    if (auto* row = dynamic_cast<SessionRowView*>(object)) return new RowItem(row);
    if (auto* section = dynamic_cast<SessionSectionView*>(object)) return new SectionList(section);
    if (auto* header = dynamic_cast<FloatingChipHeader*>(object)) return new ChipHeaderButton(header);
    if (auto* toggle = dynamic_cast<ForgeToggle*>(object)) return new Switch(toggle);
    if (dynamic_cast<ElidedLabel*>(object) || dynamic_cast<FireText*>(object))
        return new DrawnText(static_cast<QWidget*>(object));
    return nullptr;
}

} // namespace

void install() {
    static std::once_flag once;
    std::call_once(once, [] { QAccessible::installFactory(describe); });
}

} // namespace tovrin::ViewAccessibility
