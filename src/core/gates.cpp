#include "core/gates.h"

namespace harvelop
{

BoxAnswer GatedDialogs::Show(const Box& box)
{
    if (!m_end.Ended()) {
        const BoxAnswer answer = m_dialogs.Show(box);
        // The program may have ended while the box stood open; its answer then starts nothing any more.
        if (!m_end.Ended())
            return answer;
    }
    switch (box.buttons) {
    case BoxButtons::Ok:
        return BoxAnswer::Ok;
    case BoxButtons::OkCancel:
        return BoxAnswer::Cancel;
    case BoxButtons::YesNo:
        return BoxAnswer::No;
    }
    return BoxAnswer::Cancel;
}

std::string GatedDialogs::AskPassword(const std::string& text, const std::string& title)
{
    if (m_end.Ended())
        return {};
    std::string answer = m_dialogs.AskPassword(text, title);
    return m_end.Ended() ? std::string() : answer;
}

bool GatedDataFiles::Replace(const std::string& path, const std::string& text)
{
    return !m_end.Ended() && m_files.Replace(path, text);
}

bool GatedDataFiles::Remove(const std::string& path)
{
    return !m_end.Ended() && m_files.Remove(path);
}

} // namespace harvelop
