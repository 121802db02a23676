#include "panels/cut_texts.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QKeySequence>
#include <QLabel>
#include <QStyleOptionGroupBox>
#include <QTabBar>
#include <QTextDocument>
#include <QToolButton>

#include <algorithm>
#include <map>

namespace harvelop::test
{

namespace
{

struct Room {
    QSize has;
    QSize takes;
};

// A text as it is drawn: of several lines, without the marks of keys.
QSize drawnSize(const QFontMetrics& metrics, const QString& text)
{
    return metrics.size(Qt::TextShowMnemonic, text);
}

Room roomOf(const QLabel& label)
{
    const QSize inside = label.contentsRect().size() - QSize(2 * label.margin(), 2 * label.margin());
    if (label.wordWrap())
        return {label.size(), QSize(label.minimumSizeHint().width(), label.heightForWidth(label.width()))};
    if (label.textFormat() == Qt::RichText)
        return {label.size(), label.sizeHint()};
    return {inside, drawnSize(label.fontMetrics(), label.text())};
}

Room roomOf(const QGroupBox& box)
{
    // The frame and the gaps beside the title, of a box that has nothing but a title.
    QGroupBox alone(box.title());
    alone.setFont(box.font());
    return {box.size(), QSize(alone.minimumSizeHint().width(), 0)};
}

std::string described(const QString& name, const QString& text, const Room& room)
{
    const auto sizeText = [](const QSize& size) {
        return std::to_string(size.width()) + "x" + std::to_string(size.height());
    };
    return name.toStdString() + " \"" + text.toStdString() + "\": has " + sizeText(room.has) + ", takes " +
           sizeText(room.takes);
}

bool isCut(const Room& room)
{
    return room.takes.width() > room.has.width() || room.takes.height() > room.has.height();
}

void lookAtTabs(const QTabBar& tabs, std::vector<std::string>& cut)
{
    for (int i = 0; i < tabs.count(); ++i) {
        const Room room{tabs.tabRect(i).size(), drawnSize(tabs.fontMetrics(), tabs.tabText(i))};
        if (isCut(room) || !tabs.rect().contains(tabs.tabRect(i)))
            cut.push_back(described(tabs.objectName() + " tab", tabs.tabText(i), room));
    }
}

// What of a window shows: of its own, not of windows above it.
std::vector<const QWidget*> shownIn(const QWidget& window)
{
    std::vector<const QWidget*> shown;
    for (const QWidget* widget : window.findChildren<QWidget*>())
        if (widget->isVisible() && widget->window() == window.window())
            shown.push_back(widget);
    return shown;
}

std::multimap<std::string, std::string> keysIn(const QWidget& window)
{
    std::multimap<std::string, std::string> keys;
    const auto note = [&keys](const QString& text, const QString& name) {
        const QKeySequence key = QKeySequence::mnemonic(text);
        if (!key.isEmpty())
            keys.emplace(key.toString().toStdString(), name.toStdString());
    };
    for (const QWidget* widget : shownIn(window)) {
        if (const auto* tabs = qobject_cast<const QTabBar*>(widget))
            for (int i = 0; i < tabs->count(); ++i)
                note(tabs->tabText(i), "tab " + QString::number(i));
        else if (const auto* label = qobject_cast<const QLabel*>(widget); label && label->buddy())
            note(label->text(), label->objectName());
        else if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
            note(button->text(), button->objectName());
        else if (const auto* box = qobject_cast<const QGroupBox*>(widget))
            note(box->title(), box->objectName());
    }
    return keys;
}

} // namespace

std::vector<std::string> CutTexts(const QWidget& window)
{
    std::vector<std::string> cut;
    const auto look = [&cut](const QWidget& widget, const QString& text, const Room& room) {
        if (!text.isEmpty() && isCut(room))
            cut.push_back(described(widget.objectName(), text, room));
    };
    for (const QWidget* widget : shownIn(window)) {
        if (const auto* label = qobject_cast<const QLabel*>(widget))
            look(*label, label->text(), roomOf(*label));
        else if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
            look(*button, button->text(), {button->size(), button->sizeHint()});
        else if (const auto* box = qobject_cast<const QGroupBox*>(widget))
            look(*box, box->title(), roomOf(*box));
        else if (const auto* tabs = qobject_cast<const QTabBar*>(widget))
            lookAtTabs(*tabs, cut);
    }
    return cut;
}

std::vector<std::string> DoubledKeys(const QWidget& window)
{
    std::vector<std::string> doubled;
    const auto keys = keysIn(window);
    for (auto at = keys.begin(); at != keys.end(); at = keys.upper_bound(at->first)) {
        if (keys.count(at->first) < 2)
            continue;
        std::string line = at->first + ":";
        for (auto [one, end] = keys.equal_range(at->first); one != end; ++one)
            line += " " + one->second;
        doubled.push_back(line);
    }
    return doubled;
}

std::vector<std::string> ControlsWithKey(const QWidget& window)
{
    std::vector<std::string> names;
    for (const auto& [key, name] : keysIn(window))
        names.push_back(name);
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace harvelop::test
