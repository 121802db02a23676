// Answers boxes and questions from a queue; an unexpected one fails the test, and so does an answer left over.
#pragma once

#include "platform/dialogs.h"

#include <deque>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace harvelop::test
{

class ScriptedDialogs : public Dialogs
{
public:
    ~ScriptedDialogs() override
    {
        EXPECT_TRUE(m_answers.empty()) << m_answers.size() << " expected boxes did not show";
        EXPECT_TRUE(m_passwords.empty()) << m_passwords.size() << " expected password questions did not show";
        EXPECT_TRUE(m_paths.empty()) << m_paths.size() << " expected choosers did not show";
    }

    void Expect(BoxAnswer answer) { m_answers.push_back(answer); }
    void ExpectPassword(const std::string& answer) { m_passwords.push_back(answer); }
    void ExpectChooser(const std::string& path) { m_paths.push_back(path); } // of a folder or a file; empty: cancelled

    BoxAnswer Show(const Box& box) override
    {
        shown.push_back(box);
        if (whileShown)
            whileShown();
        if (m_answers.empty()) {
            ADD_FAILURE() << "unexpected box: " << box.title << ": " << box.text;
            return BoxAnswer::Cancel;
        }
        const BoxAnswer answer = m_answers.front();
        m_answers.pop_front();
        return answer;
    }

    std::string AskPassword(const std::string& text, const std::string& title) override
    {
        asked.push_back({text, title});
        if (whileShown)
            whileShown();
        if (m_passwords.empty()) {
            ADD_FAILURE() << "unexpected password question";
            return {};
        }
        const std::string answer = m_passwords.front();
        m_passwords.pop_front();
        return answer;
    }

    std::string BrowseFolder(const std::string& title, const std::string& startIn) override
    {
        return choose({title, startIn});
    }
    std::string OpenFile(const std::string& title, const std::string& startIn, const std::string& extension) override
    {
        return choose({title, startIn, extension});
    }

    struct Question {
        std::string text;
        std::string title;
    };
    std::vector<Box> shown;
    std::vector<Question> asked;
    struct Chooser {
        std::string title;
        std::string startIn;
        std::string extension = {}; // that need not be typed; none for a folder
    };
    std::vector<Chooser> choosers;
    std::function<void()> whileShown; // something that happens while a box stands open

private:
    std::string choose(const Chooser& chooser)
    {
        choosers.push_back(chooser);
        if (whileShown)
            whileShown();
        if (m_paths.empty()) {
            ADD_FAILURE() << "unexpected chooser: " << chooser.title;
            return {};
        }
        const std::string path = m_paths.front();
        m_paths.pop_front();
        return path;
    }

    std::deque<BoxAnswer> m_answers;
    std::deque<std::string> m_passwords;
    std::deque<std::string> m_paths;
};

} // namespace harvelop::test
