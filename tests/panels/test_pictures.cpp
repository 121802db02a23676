#include "identify/model_descriptions.h"
#include "identify/model_set_up.h"
#include "panels/panel_rules.h"

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdlib>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <string>
#include <vector>

// Asks for the resources of a static library; it works outside of any namespace only.
static void initPictures()
{
    Q_INIT_RESOURCE(panels);
}

namespace harvelop::test
{

namespace
{

constexpr const char* Models[] = {"KR20 ", "KR21 ", "KR23 ", "KR200", "KR205", "KR215", "KR300",
                                  "KR305", "KR315", "KR40",  "KR41",  "KR45",  "KR400"};
constexpr int UnknownModel = 10;

std::vector<int> allItems()
{
    std::vector<int> items = {UnknownModel};
    for (const char* model : Models)
        items.push_back(LookOf(model)->picture);
    return items;
}

std::string nameOf(int item)
{
    initPictures();
    return std::string(PictureFile(item));
}

QImage render(int item)
{
    QSvgRenderer drawing(QString::fromStdString(nameOf(item)));
    QImage image(drawing.defaultSize(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawing.render(&painter);
    return image;
}

std::string sourceOf(int item)
{
    QFile file(QString::fromStdString(nameOf(item)));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << nameOf(item);
    return file.readAll().toStdString();
}

std::string groupIn(const std::string& source, const std::string& id)
{
    const size_t start = source.find("<g id=\"" + id + "\">");
    return start == std::string::npos ? "" : source.substr(start, source.find("</g>", start) - start);
}

int countIn(const std::string& text, const std::string& part)
{
    int count = 0;
    for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size()))
        ++count;
    return count;
}

std::string captionOf(const char* model, std::string_view label)
{
    for (const SpecificationLine& line : DescribeModel(model, "3", false).lines)
        if (line.label == label)
            return line.text;
    return "";
}

// The number at the end of a caption; 0 for "None".
int channelsOf(const char* model, std::string_view label)
{
    const std::string caption = captionOf(model, label);
    return std::atoi(caption.substr(caption.find(": ") + 2).c_str());
}

} // namespace

TEST(Pictures, EachLoadsAndIsOfTheSameSizeWithoutABackground)
{
    for (const int item : allItems()) {
        const QImage image = render(item);
        EXPECT_EQ(image.size(), QSize(240, 150)) << nameOf(item);
        EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0) << nameOf(item);
        EXPECT_EQ(qAlpha(image.pixel(239, 149)), 0) << nameOf(item);
        EXPECT_GT(qAlpha(image.pixel(120, 75)), 0) << nameOf(item);
    }
}

TEST(Pictures, EachDiffersFromAllOthers)
{
    std::map<std::string, QImage> images;
    for (const int item : allItems())
        images[nameOf(item)] = render(item);
    for (auto one = images.begin(); one != images.end(); ++one)
        for (auto other = std::next(one); other != images.end(); ++other)
            EXPECT_NE(one->second, other->second) << one->first << " " << other->first;
    EXPECT_EQ(images.size(), 14U);
}

TEST(Pictures, EachShowsWhatItsModelIsDescribedToHave)
{
    for (const char* model : Models) {
        const std::string source = sourceOf(LookOf(model)->picture);
        const auto shows = [&source](const char* part) {
            return countIn(source, "<use xlink:href=\"#" + std::string(part) + "\"") > 0;
        };
        const std::string terminal = "<use xlink:href=\"#terminal\"";
        EXPECT_EQ(countIn(groupIn(source, "analog"), terminal), channelsOf(model, "lblAnalogChannels")) << model;
        EXPECT_EQ(countIn(groupIn(source, "digital"), terminal), channelsOf(model, "lblDigitalChannels")) << model;
        EXPECT_EQ(shows("key"), captionOf(model, "lblDisplay") == "Display: Yes ") << model;
        EXPECT_EQ(shows("ethernet"), captionOf(model, "lblEthernet") != "Ethernet : No") << model;
        EXPECT_EQ(shows("usb"), !captionOf(model, "lblUSB").empty()) << model;
        EXPECT_EQ(shows("pcmcia"), captionOf(model, "lblMemoryCard") == "Ext. Memory: PCMCIA FLASH") << model;
        EXPECT_EQ(shows("card"), captionOf(model, "lblMemoryCard").starts_with("Memory Card")) << model;
        EXPECT_TRUE(shows("rs232")) << model;
    }
}

} // namespace harvelop::test
