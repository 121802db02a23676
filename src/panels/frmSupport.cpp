#include "panels/frmSupport.h"

#include "core/windows_version.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QComboBox>
#include <QFontMetrics>
#include <QGroupBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QStyle>
#include <QWindow>

#include <algorithm>
#include <cmath>

namespace harvelop
{

namespace
{

constexpr double TwipsPerInch = 1440.0;
constexpr char16_t RawByte = 0xDC00; // plus the byte: a lone surrogate, which no valid text holds

QString utf8(std::string_view bytes)
{
    return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

bool isWhole(const QString& text, std::string_view bytes)
{
    return text.toUtf8().toStdString() == bytes;
}

// How many bytes a character takes that begins with this one.
size_t characterLength(unsigned char lead)
{
    return lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
}

bool isRawByte(const QString& text, qsizetype i)
{
    const char16_t unit = text.at(i).unicode();
    const bool paired = i > 0 && text.at(i - 1).isHighSurrogate();
    return !paired && unit >= RawByte + 0x80 && unit <= RawByte + 0xFF;
}

QAccessibleInterface* windowAccess(const QString& kind, QObject* object)
{
    auto* widget = qobject_cast<QWidget*>(object);
    // Asked for each class that the object is of, the nearest first; dialogs have been answered for by then.
    const bool plain = widget && kind == "QWidget" && widget->isWindow() && widget->windowFlags() & Qt::Window;
    return plain ? new QAccessibleWidget(widget, QAccessible::Window) : nullptr;
}

// Whether enough of the title bar shows to take hold of the window.
bool isOnScreen(const QRect& window)
{
    constexpr int Handle = 60;
    constexpr int TitleBar = 20;
    const QRect title(window.topLeft(), QSize(window.width(), TitleBar));
    const auto screens = QGuiApplication::screens();
    return std::any_of(screens.begin(), screens.end(), [&](const QScreen* screen) {
        return screen->availableGeometry().intersected(title).width() >= Handle;
    });
}

} // namespace

QString ToQString(std::string_view bytes)
{
    QString text = utf8(bytes);
    if (isWhole(text, bytes))
        return text;
    text.clear();
    while (!bytes.empty()) {
        const auto lead = static_cast<unsigned char>(bytes.front());
        const std::string_view character = bytes.substr(0, characterLength(lead));
        const QString decoded = utf8(character);
        const bool valid = isWhole(decoded, character);
        text += valid ? decoded : QString(QChar(static_cast<char16_t>(RawByte + lead)));
        bytes.remove_prefix(valid ? character.size() : 1);
    }
    return text;
}

std::string ToText(const QString& text)
{
    std::string bytes;
    qsizetype begin = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!isRawByte(text, i))
            continue;
        bytes += text.mid(begin, i - begin).toUtf8().toStdString();
        bytes += static_cast<char>(text.at(i).unicode() & 0xFF);
        begin = i + 1;
    }
    return bytes + text.mid(begin).toUtf8().toStdString();
}

int TwipsToPixels(double twips, const QWidget& window)
{
    constexpr double Farthest = 1e6; // a stored position may be any number
    return static_cast<int>(std::lround(std::clamp(twips, -Farthest, Farthest) * window.logicalDpiX() / TwipsPerInch));
}

double PixelsToTwips(int pixels, const QWidget& window)
{
    return std::round(pixels * TwipsPerInch / window.logicalDpiX());
}

void MoveToTwips(QWidget& window, double left, double top)
{
    // The frame that the desktop will put around it is not known yet: room for a title bar is a fair guess.
    const int title = window.style()->pixelMetric(QStyle::PM_TitleBarHeight);
    QRect place(QPoint(TwipsToPixels(left, window), TwipsToPixels(top, window)),
                window.sizeHint().expandedTo(window.minimumSizeHint()) + QSize(title, 2 * title));
    if (!isOnScreen(place)) {
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        place.moveLeft(std::max(screen.left(), std::min(place.left(), screen.right() - place.width())));
        place.moveTop(std::max(screen.top(), std::min(place.top(), screen.bottom() - place.height())));
    }
    window.move(place.topLeft());
}

void AdjustHeight(QWidget& panel, const std::string& windowsVersion)
{
    if (TallerPanel(windowsVersion))
        panel.setMinimumHeight(panel.sizeHint().height() + panel.style()->pixelMetric(QStyle::PM_TitleBarHeight));
}

void ShowPlaced(QWidget& window)
{
    if (!window.testAttribute(Qt::WA_WState_Created)) {
        const QPoint place = window.pos();
        window.winId(); // makes the window, which then takes a place for its contents
        window.windowHandle()->setPosition(place);
    }
    window.show();
}

void SetWidthInCharacters(QWidget& field, int characters)
{
    const int frame = field.sizeHint().height() - field.fontMetrics().height();
    const int width = field.fontMetrics().averageCharWidth() * characters + frame;
    field.setMinimumWidth(width);
    field.setMaximumWidth(width);
}

void ShowStored(QLineEdit& field, std::string_view stored)
{
    const QString text = ToQString(stored);
    field.setMaxLength(std::max(field.maxLength(), static_cast<int>(text.size())));
    field.setText(text);
}

void EnableWithReason(QWidget& control, bool enabled, const char* whyNot)
{
    control.setEnabled(enabled);
    control.setToolTip(enabled ? QString() : QString(whyNot));
}

bool TakeBackTyped(QLineEdit& field, std::string_view allowed)
{
    const int caret = field.cursorPosition();
    const QString text = field.text();
    const auto isAllowed = [allowed](QChar c) {
        return c.unicode() < 0x80 && allowed.find(c.toLatin1()) != std::string_view::npos;
    };
    if (caret == 0 || isAllowed(text.at(caret - 1)) || field.isRedoAvailable())
        return false;
    field.backspace();
    return true;
}

void SetFieldEnabled(QLineEdit& field, bool enabled)
{
    field.setEnabled(enabled);
    QPalette palette;
    if (!enabled)
        palette.setBrush(QPalette::Disabled, QPalette::Base,
                         field.palette().brush(QPalette::Disabled, QPalette::Button));
    field.setPalette(palette);
}

void LookReadOnly(QLineEdit& field)
{
    QPalette palette;
    palette.setBrush(QPalette::Base, field.palette().brush(QPalette::Window));
    field.setPalette(palette);
}

void MakePlaceholdersLegible()
{
    constexpr float Dimmed = 0.7F;
    QColor color = QApplication::palette().color(QPalette::Active, QPalette::Text);
    color.setAlphaF(Dimmed);
    QPalette palette;
    palette.setColor(QPalette::PlaceholderText, color);
    QApplication::setPalette(palette);
}

void ShowCaption(QWidget& window, const std::string& caption)
{
    window.setWindowTitle(ToQString(caption));
    QAccessibleEvent changed(&window, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&changed);
}

void LabelLists(QWidget& form)
{
    for (QComboBox* list : form.findChildren<QComboBox*>()) {
        if (list->accessibleName().isEmpty())
            continue;
        auto* label = new QLabel(list->accessibleName(), list->parentWidget());
        label->setBuddy(list);
        label->hide();
    }
}

void MakePlainWindowsAccessible()
{
    QAccessible::installFactory(windowAccess);
}

bool WidgetCaption::SetCaption(const std::string& caption)
{
    const QString text = ToQString(caption);
    if (auto* label = qobject_cast<QLabel*>(&m_widget)) {
        label->setText(text);
        if (QWidget* field = label->buddy())
            field->setAccessibleName({});
    } else if (auto* button = qobject_cast<QAbstractButton*>(&m_widget)) {
        button->setText(text);
        button->setAccessibleName({});
    } else if (auto* box = qobject_cast<QGroupBox*>(&m_widget)) {
        box->setTitle(text);
    } else if (m_widget.isWindow()) {
        m_widget.setWindowTitle(text);
    } else {
        return false;
    }
    return true;
}

bool WidgetCaption::SetFontName(const std::string& name)
{
    if (!name.empty()) {
        QFont font = m_widget.font();
        font.setFamily(ToQString(name));
        m_widget.setFont(font);
    }
    return true;
}

bool WidgetCaption::SetFontSize(int points)
{
    if (points > 0) {
        QFont font = m_widget.font();
        font.setPointSize(points);
        m_widget.setFont(font);
    }
    return true;
}

} // namespace harvelop
