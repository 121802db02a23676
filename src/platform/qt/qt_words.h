// The words that the windows bring along themselves, such as those on the buttons of boxes and in choosers.
#pragma once

#include <QTranslator>

#include <string>

namespace harvelop
{

class QtWords
{
public:
    // From now on they are those of a language by its English name: "German". Stays with the words so far if Qt's
    // translation into it is not on this machine, or the name is none of a language.
    void Speak(const std::string& language);

private:
    QTranslator m_words;
};

} // namespace harvelop
