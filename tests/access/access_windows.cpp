// Windows for the tests of access: those of ours that nothing shows at present, and bad ones, each with one fault that
// the rules must find. Shows the one that the command line names until it is closed.
#include "settings/frmLanguage.h"
#include "settings/options.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <functional>
#include <iostream>
#include <map>
#include <memory>
#include <string_view>

namespace
{

using Window = std::unique_ptr<QDialog>;

// A window on which nothing is wrong yet: a field with its label, and two buttons.
struct Sound {
    Window window = std::make_unique<QDialog>();
    QVBoxLayout* layout = new QVBoxLayout(window.get());
    QLabel* label = new QLabel("&Site", window.get());
    QLineEdit* field = new QLineEdit(window.get());
    QPushButton* test = new QPushButton("&Test", window.get());
    QPushButton* ok = new QPushButton("O&k", window.get());

    Sound()
    {
        label->setBuddy(field);
        for (QWidget* part : {static_cast<QWidget*>(label), static_cast<QWidget*>(field), static_cast<QWidget*>(test),
                              static_cast<QWidget*>(ok)})
            layout->addWidget(part);
        QObject::connect(ok, &QPushButton::clicked, window.get(), &QDialog::accept);
    }
};

Window unnamed()
{
    Sound sound;
    sound.field->setToolTip("Where the logger stands");
    sound.label->setBuddy(nullptr);
    return std::move(sound.window);
}

Window silent()
{
    Sound sound;
    sound.test->setEnabled(false);
    return std::move(sound.window);
}

Window clashing()
{
    Sound sound;
    sound.test->setText("Te&st");
    return std::move(sound.window);
}

Window trap()
{
    Sound sound;
    auto* text = new QPlainTextEdit(sound.window.get());
    text->setAccessibleName("Notes");
    sound.layout->insertWidget(2, text);
    QWidget::setTabOrder(sound.field, text);
    return std::move(sound.window);
}

Window unreachable()
{
    Sound sound;
    sound.test->setFocusPolicy(Qt::ClickFocus);
    return std::move(sound.window);
}

Window disordered()
{
    Sound sound;
    QWidget::setTabOrder(sound.ok, sound.field);
    QWidget::setTabOrder(sound.field, sound.test);
    sound.layout->insertWidget(3, new QCheckBox("&All", sound.window.get()));
    return std::move(sound.window);
}

Window torn()
{
    Sound sound;
    auto* group = new QGroupBox("Schedules", sound.window.get());
    auto* rows = new QVBoxLayout(group);
    auto* first = new QCheckBox("&A", group);
    auto* last = new QCheckBox("&B", group);
    rows->addWidget(first);
    rows->addWidget(last);
    sound.layout->addWidget(group);
    QWidget::setTabOrder(sound.field, first);
    QWidget::setTabOrder(first, sound.test);
    QWidget::setTabOrder(sound.test, sound.ok);
    QWidget::setTabOrder(sound.ok, last);
    return std::move(sound.window);
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName("access_windows");
    harvelop::Options options;
    const std::map<std::string_view, std::function<Window()>> windows = {
        {"language", [&options] { return std::make_unique<harvelop::frmLanguage>(options); }},
        {"sound", [] { return std::move(Sound().window); }},
        {"unnamed", unnamed},
        {"silent", silent},
        {"clashing", clashing},
        {"trap", trap},
        {"unreachable", unreachable},
        {"disordered", disordered},
        {"torn", torn},
    };
    const auto wanted = windows.find(argc > 1 ? argv[1] : "");
    if (wanted == windows.end()) {
        std::cerr << "access_windows: which window?\n";
        return 2;
    }
    const Window window = wanted->second();
    if (window->windowTitle().isEmpty())
        window->setWindowTitle(argv[1]);
    window->exec();
    return 0;
}
