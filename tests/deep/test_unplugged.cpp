// The line vanishes in the middle of each dialogue: behind the first character that comes in, the second, ..., and
// before the first line that goes out, the second, ... In the short form behind and before some of them.
#include "deep/bench.h"

namespace harvelop::test
{

namespace
{

constexpr int CharacterStride = 41;
constexpr int LineStride = 5;

class DeepUnplugged : public testing::TestWithParam<Dialogue>
{
protected:
    // `cut` says where, `passed` what is counted.
    static void Walk(long CutDevice::*cut, long CutDevice::*passed, int stride)
    {
        DeepBench undisturbed;
        GetParam().prepare(undisturbed);
        const auto first = undisturbed.far;
        GetParam().go(undisturbed);
        const long all = (*first).*passed;
        ASSERT_GT(all, 0);
        for (long at = 1; at <= all; at += stride) {
            SCOPED_TRACE("cut at " + std::to_string(at) + " of " + std::to_string(all));
            DeepBench bench;
            GetParam().prepare(bench);
            bench.far.get()->*cut = at;
            double cutMs = -1;
            size_t heard = 0;
            bench.far->whenCut = [&, unplug = bench.far->whenCut] {
                cutMs = bench.pump.NowMs();
                unplug();
                heard = static_cast<size_t>(bench.far->lines);
            };
            GetParam().go(bench);
            bench.pump.ServePending();
            EXPECT_GE(cutMs, 0);
            EXPECT_LE(bench.pump.NowMs(), cutMs + LongestRestMs);
            EXPECT_EQ(static_cast<size_t>(bench.far->lines), heard);
            bench.ExpectReleased();
            bench.ExpectUsable();
            if (HasFailure())
                return; // the other places would tell the same
        }
    }
};

} // namespace

TEST_P(DeepUnplugged, BehindAnyCharacterTheDialogueEndsAndAllIsReleased)
{
    Walk(&CutDevice::cutAtCharacter, &CutDevice::characters, Stride(CharacterStride));
}

TEST_P(DeepUnplugged, BeforeAnyLineTheDialogueEndsAndAllIsReleased)
{
    Walk(&CutDevice::cutAtLine, &CutDevice::lines, Stride(LineStride));
}

INSTANTIATE_TEST_SUITE_P(Of, DeepUnplugged, testing::ValuesIn(AllDialogues()),
                         [](const auto& run) { return std::string(run.param.name); });

} // namespace harvelop::test
