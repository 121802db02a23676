// Work on a logger's programs: a whole program on fakes in virtual time, a logger at the far end that answers by a
// table, and all that the user and the logger saw.
#pragma once

#include "loading/far_end.h"
#include "settings/message_texts.h"
#include "support/fake_forms.h"
#include "support/test_program.h"

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace harvelop
{

inline bool operator==(const Box& a, const Box& b)
{
    return a.text == b.text && a.title == b.title && a.icon == b.icon && a.buttons == b.buttons && a.detail == b.detail;
}

inline void PrintTo(const Box& box, std::ostream* out)
{
    *out << "{\"" << box.text << "\", \"" << box.title << "\", icon " << static_cast<int>(box.icon) << ", buttons "
         << static_cast<int>(box.buttons) << (box.detail.empty() ? "" : ", detail ") << box.detail << "}";
}

} // namespace harvelop

namespace harvelop::test
{

// What has happened, in order, one text each:
//   "> 13SV"                 a line that reached the logger
//   "- Memory Card Found"    a step on the progress window
//   "! The File ..."         a box; "show" and "hide" are not in it, see `messages.shows`
//   "? Choose ..."           a chooser
using Journal = std::vector<std::string>;

// The progress window, its steps written down.
class JournalMessages : public FakeMessages
{
public:
    explicit JournalMessages(Journal& journal) : m_journal(journal) {}
    void SetCaption(const std::string& caption) override
    {
        FakeMessages::SetCaption(caption);
        constexpr std::string_view Arrow = "<- ";
        m_journal.push_back("- " + (caption.starts_with(Arrow) ? caption.substr(Arrow.size()) : caption));
    }

private:
    Journal& m_journal;
};

// A program with one stored logger, the one in work, and that logger on com port 3.
struct LoadingTest : testing::Test, TestProgram {
    static constexpr const char* OlderModel = "KR200 Series 2";
    static constexpr const char* KR4Model = "KR400";
    static constexpr const char* ProgramFile = "/home/user/pump.cmd";

    explicit LoadingTest(const std::string& model = OlderModel, int number = 1)
    {
        Installed();
        heart.state.AppPath = std::string(Directory) + "/";
        heart.forms.loadMessages = [this] { return &messages; };
        heart.options.ShowMessages = true;
        heart.options.ShowLoadMessages = true;
        far->whenLine = [this](const std::string& line) { journal.push_back("> " + line); };
        dialogs.whileShown = [this] { noteQuestion(); };
        // As the programs do: what is still queued does not leave any more.
        heart.end.OnEnd = [this] { serial.ClearOutBuffer(); };
        UseLogger(model, number);
    }
    void TestBody() override {}

    // Puts that logger in the place of the one before: its record, its number as the one in work, its far end.
    void UseLogger(const std::string& model, int number = 1)
    {
        LoggerRecord record;
        record.LoggerModel = model;
        record.LoggerPort = "3";
        record.LoggerBaud = "9600";
        record.LoggerParity = "None";
        record.LoggerDataBits = "8";
        record.LoggerStopBits = "1";
        record.LoggerFlow = "SWFC";
        Store(record, number);
        far->Identify(model);
        serial.Plug(3, far, "9600");
    }
    // The same behind a network address.
    void UseNetworkLogger(const std::string& model)
    {
        LoggerRecord record;
        record.LoggerModel = model;
        record.LoggerPort = "10.0.0.5:3000";
        Store(record, 1);
        far->Identify(model);
        sockets.Plug("10.0.0.5", 3000, far);
    }
    void Store(const LoggerRecord& record, int number)
    {
        heart.tables.FoundLoggerStrings[static_cast<size_t>(number - 1)] = RecordText(record);
        heart.records.ParseLoggerSettings(number);
        heart.state.CurrentLogger = static_cast<std::int16_t>(number);
        heart.link.LinkDescription = LinkDescriptionOf(*heart.tables.Record(number));
    }

    // Really connects, and forgets what was seen of it.
    void Connect()
    {
        heart.connecting.ConnectLogger(heart.state.CurrentLogger);
        EXPECT_TRUE(heart.link.LinkConnected);
        Forget();
    }
    void Forget()
    {
        journal.clear();
        far->lines.clear();
        dialogs.shown.clear();
        m_boxesSeen = 0;
        messages.captions.clear();
        messages.shows.clear();
    }

    // From now on a language file is in use, in which text n reads "<n>".
    void UseNumberedTexts()
    {
        std::string texts;
        for (int number = 1; number <= LangEntries; ++number)
            texts += std::to_string(number) + ":1:8:<" + std::to_string(number) + ">\r\n";
        heart.options.Language = "Test";
        files.files[heart.state.AppPath + "Test.txt"] = texts;
        heart.language.LangActive = true;
        heart.language.LoadLanguageFile();
    }

    // The cable goes. The program sees the port close, as it does in earnest.
    void Unplug()
    {
        serial.ports.erase(3);
        serial.Close();
        if (!sockets.made.empty() && sockets.made.back())
            sockets.made.back()->PeerCloses();
    }

    // As the text of `ProgramFile`.
    void StoreProgram(const std::string& text) { files.files[ProgramFile] = text; }

    // The lines that reached the logger; behind the end of its identification, if there was one.
    std::vector<std::string> Lines() const
    {
        std::vector<std::string> texts;
        for (const auto& line : far->lines) {
            texts.push_back(line.text);
            if (line.text == "/h/R/U/N")
                texts.clear();
        }
        if (!texts.empty() && texts.front().empty()) // the second line end of "/h/R/U/N"
            texts.erase(texts.begin());
        return texts;
    }
    std::vector<std::string> Steps() const
    {
        std::vector<std::string> steps;
        for (const std::string& entry : journal)
            if (entry.starts_with("- "))
                steps.push_back(entry.substr(2));
        return steps;
    }
    const std::vector<Box>& Boxes() const { return dialogs.shown; }
    std::string Logger() const { return heart.link.LinkDescription; }

    Journal journal;
    std::shared_ptr<FarEnd> far = std::make_shared<FarEnd>();
    JournalMessages messages{journal};
    std::function<void(const Box&)> whenBoxShows;
    // If set, answers every box, and nothing to a password question; otherwise what `dialogs` expects does.
    std::function<BoxAnswer(const Box&)> answer;

private:
    void noteQuestion()
    {
        if (dialogs.shown.size() > m_boxesSeen) {
            m_boxesSeen = dialogs.shown.size();
            noteBox(dialogs.shown.back());
        } else if (dialogs.choosers.size() > m_choosersSeen) {
            m_choosersSeen = dialogs.choosers.size();
            journal.push_back("? " + dialogs.choosers.back().title);
        } else if (answer) {
            dialogs.ExpectPassword("");
        }
    }
    void noteBox(const Box& box)
    {
        journal.push_back("! " + box.text);
        if (whenBoxShows)
            whenBoxShows(box);
        if (answer)
            dialogs.Expect(answer(box));
    }

    size_t m_boxesSeen = 0;
    size_t m_choosersSeen = 0;
};

} // namespace harvelop::test
