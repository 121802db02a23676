#include "platform/qt/qt_dialogs.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <vector>

namespace harvelop
{

namespace
{

struct ButtonKind {
    QMessageBox::StandardButton button;
    BoxAnswer answer;
    const char* objectName;
};
constexpr ButtonKind Ok{QMessageBox::Ok, BoxAnswer::Ok, "cmdOk"};
constexpr ButtonKind Cancel{QMessageBox::Cancel, BoxAnswer::Cancel, "cmdCancel"};
constexpr ButtonKind Yes{QMessageBox::Yes, BoxAnswer::Yes, "cmdYes"};
constexpr ButtonKind No{QMessageBox::No, BoxAnswer::No, "cmdNo"};

// The first is the one that agrees, the last the one that Esc and closing stand for.
std::vector<ButtonKind> ButtonsOf(BoxButtons buttons)
{
    switch (buttons) {
    case BoxButtons::OkCancel:
        return {Ok, Cancel};
    case BoxButtons::YesNo:
        return {Yes, No};
    case BoxButtons::Ok:
        break;
    }
    return {Ok};
}

QMessageBox::Icon IconOf(BoxIcon icon)
{
    switch (icon) {
    case BoxIcon::Critical:
        return QMessageBox::Critical;
    case BoxIcon::Question:
        return QMessageBox::Question;
    case BoxIcon::Exclamation:
        return QMessageBox::Warning;
    case BoxIcon::Information:
        return QMessageBox::Information;
    case BoxIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

// Where Yes may cost something, Enter must not stand for it.
ButtonKind DefaultOf(const Box& box)
{
    const bool risky = box.icon == BoxIcon::Exclamation || box.icon == BoxIcon::Critical;
    return box.buttons == BoxButtons::YesNo && risky ? No : ButtonsOf(box.buttons).front();
}

QString TitleOf(const std::string& title)
{
    return title.empty() ? QGuiApplication::applicationDisplayName() : QString::fromStdString(title);
}

// A window that stays on top would hide a dialog that does not.
void RiseAbove(QDialog& dialog)
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    const bool covered = std::any_of(windows.begin(), windows.end(), [](const QWidget* window) {
        return window->isVisible() && window->windowFlags().testFlag(Qt::WindowStaysOnTopHint);
    });
    dialog.setWindowFlag(Qt::WindowStaysOnTopHint, covered);
}

// Takes a name that is typed without the extension, as long as no such file is there. The toolkit's own default
// extension would also go to names without one that are there.
class FileChooser : public QFileDialog
{
public:
    FileChooser(QWidget* owner, const QString& extension) : QFileDialog(owner), m_extension(extension)
    {
        setOption(DontUseNativeDialog); // the parts named here are the toolkit's
        m_name = findChild<QLineEdit*>("fileNameEdit");
        QPushButton* open = findChild<QDialogButtonBox*>("buttonBox")->button(QDialogButtonBox::Open);
        connect(m_name, &QLineEdit::textChanged, open, [this, open] {
            if (!withExtension().isEmpty())
                open->setEnabled(true);
        });
    }

protected:
    void accept() override
    {
        if (const QString name = withExtension(); !name.isEmpty())
            m_name->setText(name);
        QFileDialog::accept();
    }

private:
    // The file that is meant by what was typed, where only its extension is missing; else empty.
    QString withExtension() const
    {
        const QString typed = selectedFiles().value(0);
        const QString meant = typed + "." + m_extension;
        const bool missing = !m_extension.isEmpty() && !QFileInfo::exists(typed) && QFileInfo(meant).isFile();
        return missing ? meant : QString();
    }

    QString m_extension;
    QLineEdit* m_name;
};

// A path that the user chooses: of a file, if there is an `extension` that need not be typed, else of a folder. Empty
// if the dialog was cancelled, or went away while it stood open.
std::string Choose(const std::string& title, const std::string& startIn, const std::string& extension = {})
{
    const bool folder = extension.empty();
    const QPointer<QFileDialog> window =
        new FileChooser(QApplication::activeWindow(), QString::fromStdString(extension));
    window->setObjectName("dlgChoose");
    window->setWindowTitle(QString::fromStdString(title));
    window->setFileMode(folder ? QFileDialog::Directory : QFileDialog::ExistingFile);
    window->setOption(QFileDialog::ShowDirsOnly, folder);
    // The words are those of the pattern, but files without a dot are files, too.
    window->setNameFilter("All Files (*.*) (*)");
    window->setOption(QFileDialog::HideNameFilterDetails);
    window->setDirectory(QFile::decodeName(QByteArray::fromStdString(startIn)));
    RiseAbove(*window);
    const bool accepted = window->exec() == QDialog::Accepted && window;
    const QStringList chosen = accepted ? window->selectedFiles() : QStringList();
    delete window;
    return chosen.isEmpty() ? std::string() : QFile::encodeName(QDir::cleanPath(chosen.front())).toStdString();
}

void Fill(QMessageBox& window, const Box& box)
{
    window.setObjectName("boxMessage");
    window.setWindowTitle(TitleOf(box.title));
    window.setIcon(IconOf(box.icon));
    window.setTextFormat(Qt::PlainText);
    window.setText(QString::fromStdString(box.text));
    window.setInformativeText(QString::fromStdString(box.detail));
    // That text comes from outside, such as the name of a program.
    if (auto* detail = window.findChild<QLabel*>("qt_msgbox_informativelabel"))
        detail->setTextFormat(Qt::PlainText);
    for (const ButtonKind& kind : ButtonsOf(box.buttons))
        window.addButton(kind.button)->setObjectName(kind.objectName);
    window.setDefaultButton(DefaultOf(box).button);
}

} // namespace

BoxAnswer QtDialogs::Show(const Box& box)
{
    const QPointer<QMessageBox> window = new QMessageBox(QApplication::activeWindow());
    Fill(*window, box);
    RiseAbove(*window);
    const int chosen = window->exec();
    delete window;
    const std::vector<ButtonKind> kinds = ButtonsOf(box.buttons);
    const auto kind = std::find_if(kinds.begin(), kinds.end(), [&](const auto& one) { return one.button == chosen; });
    return kind == kinds.end() ? kinds.back().answer : kind->answer;
}

std::string QtDialogs::AskPassword(const std::string& text, const std::string& title)
{
    const QPointer<QDialog> window = new QDialog(QApplication::activeWindow());
    window->setObjectName("dlgPassword");
    window->setWindowTitle(TitleOf(title));
    auto* label = new QLabel(QString::fromStdString(text), window);
    label->setObjectName("lblPassword");
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    auto* input = new QLineEdit(window);
    input->setObjectName("txtPassword");
    input->setEchoMode(QLineEdit::Password);
    input->setAccessibleName(label->text().trimmed());
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, window);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(Ok.objectName);
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(Cancel.objectName);
    QObject::connect(buttons, &QDialogButtonBox::accepted, window, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, window, &QDialog::reject);
    auto* layout = new QVBoxLayout(window);
    for (QWidget* part : {static_cast<QWidget*>(label), static_cast<QWidget*>(input), static_cast<QWidget*>(buttons)})
        layout->addWidget(part);
    input->setFocus();
    RiseAbove(*window);
    const bool accepted = window->exec() == QDialog::Accepted && window;
    std::string answer = accepted ? input->text().toStdString() : std::string();
    delete window;
    return answer;
}

std::string QtDialogs::BrowseFolder(const std::string& title, const std::string& startIn)
{
    return Choose(title, startIn);
}

std::string QtDialogs::OpenFile(const std::string& title, const std::string& startIn, const std::string& extension)
{
    return Choose(title, startIn, extension);
}

} // namespace harvelop
