// Clearing a logger: the bench of loading with a job chooser that a user answers.
#pragma once

#include "loading/loading_bench.h"

#include <cmath>
#include <memory>
#include <string>
#include <vector>

namespace harvelop::test
{

class FakeJobs : public JobForm
{
public:
    void Show(const std::vector<std::string>& jobs) override
    {
        visible = true;
        offers.push_back(jobs);
        if (whenShown)
            whenShown();
    }
    bool IsVisible() const override { return visible; }

    bool visible = false;
    std::vector<std::vector<std::string>> offers; // what it was shown with, each time
    std::function<void()> whenShown;
};

constexpr double AnswerMs = 300; // after which the user answers the chooser

// Gives the program a chooser. It is left open until something closes it.
inline std::shared_ptr<FakeJobs> UseChooser(LoadingTest& t)
{
    auto jobs = std::make_shared<FakeJobs>();
    t.heart.forms.loadJobs = [jobs] { return jobs.get(); };
    return jobs;
}
// Its Delete button with that entry of the list, and any other way to close it.
inline void ChooseIn(LoadingTest& t, const std::shared_ptr<FakeJobs>& jobs, const std::string& entry)
{
    jobs->whenShown = [&t, form = jobs.get(), entry] {
        t.pump.After(AnswerMs, [&t, form, entry] {
            t.heart.loading.JobDeleteConfirmed = true;
            t.heart.loading.ChosenJob = PlainJobName(entry);
            form->visible = false;
        });
    };
}
inline void CloseIn(LoadingTest& t, const std::shared_ptr<FakeJobs>& jobs)
{
    jobs->whenShown = [&t, form = jobs.get()] { t.pump.After(AnswerMs, [form] { form->visible = false; }); };
}

// Jobs ALPHA, which is running, and BETA. BETA holds data, and so do all jobs together.
inline void AnswerAsJobs(FarEnd& far)
{
    const std::string refused = "Job not deleted - it has data\r\n";
    far.Answer("DIRJOBS", "*ALPHA\r\nBETA\r\n");
    far.Answer("CURJOB", "*ALPHA\r\n");
    far.Answer("DELJOB\"BETA\"", {{refused}, {"Job BETA done\r\n"}});
    far.Answer("DELDATA\"BETA\"", "Data deleted\r\n");
    far.Answer("DELJOB*", {{refused}, {"All jobs done\r\n"}});
    far.Answer("DELALARMS*", "Alarms deleted\r\n");
    far.Answer("DELDATA*", "Data deleted\r\n");
}

// A logger with those jobs; the progress window never stands beside a box.
struct ClearTest : LoadingTest {
    explicit ClearTest(const std::string& model = KR4Model) : LoadingTest(model)
    {
        AnswerAsJobs(*far);
        whenBoxShows = [this](const Box&) { EXPECT_FALSE(messages.Visible()); };
    }

    void Choose(const std::string& entry) { ChooseIn(*this, jobs, entry); }
    void CloseChooser() { CloseIn(*this, jobs); }

    // Milliseconds from the first of the lines to each, and since one of them.
    std::vector<long> Times() const
    {
        std::vector<long> times;
        for (const auto& line : far->lines)
            times.push_back(std::lround(line.ms - far->lines.front().ms));
        return times;
    }
    long Since(const FarEnd::Line& line) const { return std::lround(pump.NowMs() - line.ms); }

    std::shared_ptr<FakeJobs> jobs = UseChooser(*this);
};

} // namespace harvelop::test
