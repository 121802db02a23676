// What all forms share: the way between the heart's texts and Qt's, twips and pixels, and captions by number.
#pragma once

#include "settings/language_tables.h"

#include <QApplication>
#include <QPoint>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <string>
#include <string_view>

class QLineEdit;

namespace harvelop
{

// The heart's texts are bytes, as a rule UTF-8. A byte that is not part of valid UTF-8 travels through the controls as
// a lone surrogate, so that a text which the user does not touch comes back byte for byte.
QString ToQString(std::string_view bytes);
std::string ToText(const QString& text);

// Twips are 1440 to the logical inch of the window's screen.
int TwipsToPixels(double twips, const QWidget& window);
double PixelsToTwips(int pixels, const QWidget& window);

// Moves a window to a place given in twips. A place off every screen is brought back into view.
void MoveToTwips(QWidget& window, double left, double top);

// A panel's height follows its layout; on the one system that wants it taller, room for a title bar is added.
void AdjustHeight(QWidget& panel, const std::string& windowsVersion);

// Shows a window; the first time where MoveToTwips put it. Places are those of a window's contents: how thick a frame
// the desktop puts around them is known only later, and the window would move by it at every start.
void ShowPlaced(QWidget& window);

// As wide as so many characters of its font; it does not stretch beyond.
void SetWidthInCharacters(QWidget& field, int characters);

// Shows a stored text. One that is longer than can be typed is not cut, so that it changes only by the user's hand.
void ShowStored(QLineEdit& field, std::string_view stored);

// Enables a text box in the window colour, or disables it in the button-face colour.
void SetFieldEnabled(QLineEdit& field, bool enabled);

// Why a control can't be used, while it can't: its tool tip.
void EnableWithReason(QWidget& control, bool enabled, const char* whyNot);

// Whether the character just before the caret is not allowed: it is then taken back, which counts as a further change.
// Keystrokes are filtered so; of a pasted text only the last character is looked at. What undo brings back stays, or
// there would be no undoing beyond it.
bool TakeBackTyped(QLineEdit& field, std::string_view allowed);

// Shows an editor over its owner and returns when it is closed. One that is open already is closed first.
template <typename Form, typename Services> void ShowModally(const Services& services, QWidget& owner)
{
    for (QWidget* window : QApplication::topLevelWidgets())
        if (auto* open = qobject_cast<Form*>(window))
            open->close();
    const QPointer<Form> form = new Form(services, &owner);
    form->exec();
    delete form; // gone already if the owner is
}

// A text box that can be read and copied only looks like the panel around it.
void LookReadOnly(QLineEdit& field);

// Changes a window's caption, and tells screen readers: the toolkit does not.
void ShowCaption(QWidget& window, const std::string& caption);

// Gives the placeholders of all windows a colour that can be read: some dark themes leave it black.
void MakePlaceholdersLegible();

// What a screen reader says a list is for: the toolkit tells it the chosen line as the list's name, and what the list
// is for only by a label. Each list of the form that has an accessible name gets an invisible label of that text.
void LabelLists(QWidget& form);

// What is no dialog is told to screen readers as a window all the same, not as a part of one. Once or more often.
void MakePlainWindowsAccessible();

// A widget as ApplyLangFont sees it: labels, buttons and group boxes have a caption, windows their title; other
// widgets have none. The name for screen readers that goes with the English caption goes with it: theirs is then the
// new one.
class WidgetCaption : public CaptionedControl
{
public:
    explicit WidgetCaption(QWidget& widget) : m_widget(widget) {}
    bool SetCaption(const std::string& caption) override;
    bool SetFontName(const std::string& name) override;
    bool SetFontSize(int points) override;

private:
    QWidget& m_widget;
};

} // namespace harvelop
