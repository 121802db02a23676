#include "settings/panel_loading.h"

#include "core/text_numbers.h"

namespace harvelop
{

namespace
{

bool isOn(const std::string& text)
{
    return ToInt16(text).value_or(0) != 0;
}

std::string withoutCommas(std::string text)
{
    std::erase(text, ',');
    return text;
}

std::string checkText(bool on)
{
    return on ? "1" : "0";
}

} // namespace

bool AccountsAllowEmail(const Options& options)
{
    const bool account = !options.SMTPUserName.empty() && !options.SMTPPassword.empty();
    return !options.SMTPServerName.empty() && !options.SMTPSender.empty() &&
           (!options.SMTPServerRequiresAuthentication || account);
}

bool FtpDeliveryReady(const Options& options)
{
    return !options.FTPServername.empty() && !options.FTPUserName.empty() && !options.FTPPassword.empty();
}

bool EmailDeliveryReady(const Options& options)
{
    return AccountsAllowEmail(options) && !options.SMTPPort.empty();
}

PanelValues LoadPanelValues(const LoggerRecord& record, const Options& options, bool fresh)
{
    PanelValues values;
    values.mdb = isOn(record.LoggerMdbOn);
    values.emailEnabled = EmailDeliveryReady(options);
    values.ftpEnabled = FtpDeliveryReady(options);
    values.viaEmail = values.emailEnabled && record.LoggerViaEmail != 0;
    values.viaFTP = values.ftpEnabled && record.LoggerViaFTP != 0;
    values.description = record.LoggerDescription;
    for (size_t row = 0; row < ScheduleLetters(record.LoggerModel).size(); ++row) {
        if (!fresh) {
            values.on[row] = isOn(record.ScheduleOn[row]);
            values.html[row] = isOn(record.ScheduleHTML[row]);
            values.ulast[row] = values.html[row] || isOn(record.ScheduleUlast[row]);
            values.csv[row] = values.html[row] || isOn(record.ScheduleCSV[row]);
            values.records[row] = record.ScheduleRecords[row];
        }
        if (values.records[row].empty())
            values.records[row] = "0";
    }
    return values;
}

void StorePanelValues(const PanelValues& values, LoggerRecord& record)
{
    for (size_t row = 0; row < ScheduleLetters(record.LoggerModel).size(); ++row) {
        record.ScheduleOn[row] = checkText(values.on[row]);
        record.ScheduleUlast[row] = checkText(values.ulast[row]);
        record.ScheduleCSV[row] = checkText(values.csv[row]);
        record.ScheduleHTML[row] = checkText(values.html[row]);
        record.ScheduleRecords[row] = withoutCommas(values.records[row]);
    }
    record.LoggerDescription = withoutCommas(values.description);
    record.LoggerToDisk = values.toDisk;
    record.LoggerViaEmail = values.viaEmail;
    record.LoggerViaFTP = values.viaFTP;
}

} // namespace harvelop
