#include "tests/unit/report/RandomReport.h"

#include "report/Check.h"
#include "tests/unit/report/Forms.h"

using namespace report;

namespace
{
constexpr uint32_t kReports = 60;

void expectNothingFound(const std::string& text)
{
    Checker checker([&text](const Finding& finding) {
        ADD_FAILURE() << finding.rule->name << ' ' << finding.line << ' ' << finding.group << ' ' << finding.attribute
                      << ": " << finding.message << '\n'
                      << text.substr(0, 2000);
    });
    ReadProblem problem;
    checker.end(readReportText(text, checker, problem), problem);
}
} // namespace

TEST(RandomReports, comeBackWithTheSameBytes)
{
    size_t rows = 0;
    for (uint32_t seed = 1; seed <= kReports; ++seed) {
        SCOPED_TRACE(seed);
        const Report report = RandomReport(seed).report();
        rows += rowsOf(report);
        const std::string xml = xmlOf(report, true), json = jsonOf(report, true);
        ASSERT_EQ(xmlOf(reportOf(xml), true), xml);
        ASSERT_EQ(jsonOf(reportOf(json), true), json);
        ASSERT_EQ(xmlOf(reportOf(json), true), xml);
        ASSERT_EQ(xmlOf(reportOf(jsonOf(reportOf(xml), true)), true), xml);
    }
    EXPECT_GT(rows, 1000u);
}

TEST(RandomReports, haveNothingThatCheckFinds)
{
    for (uint32_t seed = 1; seed <= kReports && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        const Report report = RandomReport(seed).report();
        expectNothingFound(xmlOf(report, seed % 2 == 0));
        expectNothingFound(jsonOf(report, seed % 2 == 0));
    }
}

TEST(RandomReports, differWhereAValueWasChanged)
{
    RandomReport random(7);
    size_t changed = 0;
    for (const Group& group : catalog()) {
        GroupRows rows = random.groupRows(group, 1);
        const Row before = rows.rows.at(0);
        if (!random.change(rows.rows[0], rows))
            continue;
        ++changed;
        size_t differences = 0;
        for (size_t i = 0; i < before.values.size(); ++i)
            differences += valueText(before.values[i]) != valueText(rows.rows[0].values[i]) ? 1U : 0U;
        EXPECT_EQ(differences, 1u) << group.name;
    }
    EXPECT_GT(changed, 35u);
}
