#include "loading/loading_services.h"

#include "links/connection_test.h"

namespace harvelop
{

bool IsKR4(const LoadingServices& services)
{
    const LoggerRecord* record = services.tables.Record(services.state.CurrentLogger);
    return record && IsKR4(record->LoggerModel);
}

bool ConnectToLogger(const LoadingServices& services)
{
    const int number = services.state.CurrentLogger;
    services.connecting.ConnectLogger(number);
    const ConnectionTest test = TestConnected(services.link, number);
    if (test == ConnectionTest::NoEntry)
        ShowBox(services, OutOfRangeBox);
    return test == ConnectionTest::Connected;
}

BoxAnswer ShowBox(const LoadingServices& services, const Box& box)
{
    services.use.progress.HideMessageForm();
    const BoxAnswer answer = services.use.dialogs.Show(box);
    if (box.buttons == BoxButtons::YesNo)
        services.link.ResponseText = std::to_string(static_cast<int>(answer));
    return answer;
}

bool Confirmed(const LoadingServices& services, const Box& question)
{
    if (services.options.ShowLoadMessages)
        return ShowBox(services, question) == BoxAnswer::Yes;
    services.link.ResponseText = std::to_string(static_cast<int>(BoxAnswer::Yes));
    return true;
}

void ShowStep(const LoadingServices& services, int number, const std::string& rest)
{
    services.use.progress.ShowProgressText(services.use.language.Text(number) + rest);
}

void ShowStepFor(const LoadingServices& services, double ms, int number, const std::string& rest)
{
    ShowStep(services, number, rest);
    services.use.waiting.WaitMs(ms);
}

Markers ReplyTo(std::string_view startText, int endCount)
{
    return {std::string(startText), 1, "\r", endCount};
}

void SendAndWaitAfresh(const LoadingServices& services, const std::string& command, const Markers& markers,
                       double timeoutMs)
{
    services.exchange.txtCharacterWindow.Clear();
    services.exchange.SendAndWait(command, markers, timeoutMs);
}

bool Passed(const LoadingServices& services)
{
    return services.link.ResponseStatus == "PASS";
}

} // namespace harvelop
