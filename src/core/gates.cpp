#include "core/gates.h"

namespace harvelop
{

BoxAnswer GatedDialogs::Show(const Box& box)
{
    if (!m_end.Ended()) {
        const BoxAnswer answer = m_dialogs.Show(box);
        // The program may have ended while the box stood open; its answer then starts nothing any more.
        if (!m_end.Ended()) {
            if (OnAnswered)
                OnAnswered(box, answer);
            return answer;
        }
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

std::string GatedDialogs::ask(const std::function<std::string()>& question)
{
    if (m_end.Ended())
        return {};
    std::string answer = question();
    return m_end.Ended() ? std::string() : answer;
}

std::string GatedDialogs::AskPassword(const std::string& text, const std::string& title)
{
    return ask([&] { return m_dialogs.AskPassword(text, title); });
}

std::string GatedDialogs::BrowseFolder(const std::string& title, const std::string& startIn)
{
    return ask([&] { return m_dialogs.BrowseFolder(title, startIn); });
}

std::string GatedDialogs::OpenFile(const std::string& title, const std::string& startIn, const std::string& extension)
{
    return ask([&] { return m_dialogs.OpenFile(title, startIn, extension); });
}

bool GatedDataFiles::Replace(const std::string& path, const std::string& text)
{
    return !m_closed && !m_end.Ended() && m_files.Replace(path, text);
}

bool GatedDataFiles::Remove(const std::string& path)
{
    return !m_closed && !m_end.Ended() && m_files.Remove(path);
}

} // namespace harvelop
