#include "operations/rule_copy.h"

#include <gtest/gtest.h>

#include "base/code_page.h"
#include "operations_fixture.h"

namespace velmora::operations {
namespace {

using store::DvRuleData;

class RuleCopyTest : public OperationsFixture {
 protected:
  RuleCopyTest() {
    auto common = Open("/Archive/Gemeinsam");
    source = Create(*common, "Quelle");
    target = Create(*common, "Ziel");
    Create(*common, "Ablage");
  }

  static DvRuleData Forwarding(std::string name) {
    DvRuleData rule;
    rule.Name = std::move(name);
    rule.Forward = true;
    rule.ForwardTo = "chef@example.org";
    return rule;
  }
  static DvRuleData Distributing(std::string name, std::vector<std::string> destinations) {
    DvRuleData rule;
    rule.Name = std::move(name);
    rule.Destinations = std::move(destinations);
    return rule;
  }
  static void Put(store::DvArchive& archive, const DvRuleData& data) {
    auto rule = archive.Rules().Add(data.Name);
    ASSERT_TRUE(rule);
    (*rule)->Data() = data;
    ASSERT_TRUE((*rule)->Update());
  }
  static std::vector<DvRuleData> RulesOf(store::DvArchive& archive) {
    std::vector<DvRuleData> rules;
    for (int i = 0; i < archive.Rules().Count().value(); ++i)
      rules.push_back((*archive.Rules().Item(i))->Data());
    return rules;
  }
  static List NamesOf(store::DvArchive& archive) {
    List names;
    for (const DvRuleData& rule : RulesOf(archive)) names.push_back(rule.Name);
    return names;
  }
  static std::vector<MarkedRule> Marked(store::DvArchive& archive) {
    std::vector<MarkedRule> marked;
    for (const std::string& name : NamesOf(archive))
      marked.push_back({static_cast<int>(marked.size()), name});
    return marked;
  }
  void Run(RuleCopyOptions options = {}) {
    RunRuleCopy(Context(), options, {source, Marked(*source)}, target);
  }
  // The entries of the log, without its first line.
  std::string LogText() {
    const std::string text = FromCodePage(Log());
    return text.substr(text.find('\n') + 1);
  }
  // The targets of the only rule that arrived.
  List ArrivedTargets() {
    const auto rules = RulesOf(*target);
    return rules.size() == 1 ? rules.front().Destinations : List{"<keine Regel>"};
  }

  ArchivePointer source, target;
};

// --- What is copied. ---

TEST_F(RuleCopyTest, EveryPropertyArrivesButRouteOnlySubject) {
  DvRuleData rule = Forwarding("Angebote");
  rule.RouteAsCopy = false;
  rule.AutoReply = rule.DeleteMessage = rule.ExcludeAttachments = rule.Miscellaneous = true;
  rule.NewMessage = rule.OnlySubject = rule.RouteAlways = true;
  rule.Enabled = false;
  rule.ColorMark = 2;
  rule.Symbol = 7;
  rule.ForwardAs = 3;
  rule.IncludeAfter = "danach";
  rule.IncludeBefore = "davor";
  rule.ReplacedSender = "büro@example.org";
  rule.ValidFrom = *DateTime::FromCivil({2026, 1, 1, 8, 0, 0});
  rule.ValidUntil = *DateTime::FromCivil({2026, 12, 31, 18, 30, 15});
  rule.Conditions = {{store::tag::Subject, 2, "Angebot", 0}, {store::tag::SenderAddress, 3, "x@y.z", 1}};
  Put(*source, rule);
  Run();
  EXPECT_EQ(RulesOf(*target), std::vector{rule});
  EXPECT_EQ(RulesOf(*source), std::vector{rule});
  EXPECT_EQ(LogText(), "");
}

// Kept on purpose: rules of old servers were copied without it, and administrators set it anew.
TEST_F(RuleCopyTest, RouteOnlySubjectStaysAtItsDefaultOnPurpose) {
  DvRuleData rule = Forwarding("Nur Betreff");
  rule.RouteOnlySubject = true;
  Put(*source, rule);
  Run();
  ASSERT_EQ(NamesOf(*target), List{"Nur Betreff"});
  EXPECT_EQ(RulesOf(*target).front().RouteOnlySubject, DvRuleData().RouteOnlySubject);
}

TEST_F(RuleCopyTest, WhatCountsOfARuleStaysBehind) {
  DvRuleData rule = Forwarding("Oft benutzt");
  rule.UsedCount = 42;
  Put(*source, rule);
  Run();
  EXPECT_EQ(RulesOf(*target).front().UsedCount, 0);
}

TEST_F(RuleCopyTest, AConditionWithoutAFieldGetsTheDefaultField) {
  DvRuleData rule = Forwarding("Ohne Feld");
  rule.Conditions = {{0, 1, "x", 1}};
  Put(*source, rule);
  Run();
  ASSERT_EQ(NamesOf(*target).size(), 1u);
  EXPECT_EQ(RulesOf(*target).front().Conditions, (std::vector<store::DvCondition>{{0x80008062, 1, "x", 1}}));
}

TEST_F(RuleCopyTest, RulesArriveInReversedOrder) {
  for (const char* name : {"A", "B", "C"}) Put(*source, Forwarding(name));
  Run();
  EXPECT_EQ(NamesOf(*target), (List{"C", "B", "A"}));
}

TEST_F(RuleCopyTest, MarksInAnyOrderAreTakenByTheirPositions) {
  for (const char* name : {"A", "B", "C", "D"}) Put(*source, Forwarding(name));
  RunRuleCopy(Context(), {}, {source, {{2, "C"}, {0, "A"}, {3, "D"}, {2, "C"}}}, target);
  EXPECT_EQ(NamesOf(*target), (List{"D", "C", "A"}));
}

// --- Rules that distribute. ---

TEST_F(RuleCopyTest, AForwardingRuleNeedsNoTarget) {
  Put(*source, Forwarding("Weiter"));
  Run();
  EXPECT_EQ(NamesOf(*target), List{"Weiter"});
  EXPECT_TRUE(RulesOf(*target).front().Destinations.empty());
}

TEST_F(RuleCopyTest, ADistributingRuleWithoutATargetIsLoggedAndLeavesNothing) {
  Put(*source, Distributing("Leer", {}));
  Put(*source, Distributing("Verloren", {"/Archive/Gemeinsam/Weg"}));
  Put(*source, Distributing("Gut", {"/Archive/Gemeinsam/Ablage"}));
  Run();
  EXPECT_EQ(NamesOf(*target), List{"Gut"});
  EXPECT_EQ(LogText(),
            " Fehler: 0 - Verloren -> Regel hat kein Zielarchiv und wird nicht kopiert\r\n"
            " Fehler: 0 - Leer -> Regel hat kein Zielarchiv und wird nicht kopiert\r\n");
  EXPECT_EQ(run_.counters.Rules, 3);
  EXPECT_EQ(run_.counters.Errors, 2);
}

TEST_F(RuleCopyTest, OnlyTheFirstTargetDecidesWhetherARuleHasOne) {
  Put(*source, Distributing("Erster fehlt", {"/Archive/Gemeinsam/Weg", "/Archive/Gemeinsam/Ablage"}));
  Run();
  EXPECT_TRUE(NamesOf(*target).empty());
}

TEST_F(RuleCopyTest, LostTargetsGoAndTheOthersMoveUp) {
  Put(*source, Distributing("Teils", {"/Archive/Gemeinsam/Weg", "/Archive/Gemeinsam/Fort",
                                      "/Archive/Gemeinsam/Ablage", "/Archive/Gemeinsam/Nie"}));
  RuleCopyOptions options;
  options.EnDelLostArcs = true;
  Run(options);
  EXPECT_EQ(ArrivedTargets(), List{"/Archive/Gemeinsam/Ablage"});
  EXPECT_EQ(RulesOf(*source).front().Destinations.size(), 4u);
}

TEST_F(RuleCopyTest, ARuleThatLosesItsLastTargetIsNotCopied) {
  Put(*source, Distributing("Verloren", {"/Archive/Gemeinsam/Weg", "/Archive/Gemeinsam/Fort"}));
  RuleCopyOptions options;
  options.EnDelLostArcs = true;
  options.Mode = CopyMode::Move;
  Run(options);
  EXPECT_TRUE(NamesOf(*target).empty());
  EXPECT_EQ(NamesOf(*source), List{"Verloren"});
}

// --- Targets that follow the rule. ---

TEST_F(RuleCopyTest, TargetsBelowTheSourceBecomeThoseBelowTheTarget) {
  Create(*source, "Rechnungen");
  Create(*target, "Rechnungen");
  Put(*source, Distributing("R", {"/Archive/Gemeinsam/Quelle/Rechnungen", "/Archive/Gemeinsam/Ablage"}));
  RuleCopyOptions options;
  options.EnUpdRouteArcs = true;
  Run(options);
  EXPECT_EQ(ArrivedTargets(), (List{"/Archive/Gemeinsam/Ziel/Rechnungen", "/Archive/Gemeinsam/Ablage"}));
}

TEST_F(RuleCopyTest, WithoutTheOptionTargetsStayWhereTheyPoint) {
  Create(*source, "Rechnungen");
  Create(*target, "Rechnungen");
  Put(*source, Distributing("R", {"/Archive/Gemeinsam/Quelle/Rechnungen"}));
  Run();
  EXPECT_EQ(ArrivedTargets(), List{"/Archive/Gemeinsam/Quelle/Rechnungen"});
}

TEST_F(RuleCopyTest, AnArchiveWhoseNameBeginsAlikeIsNoPartOfTheSource) {
  Create(*Open("/Archive/Gemeinsam"), "Quelle 2");
  Put(*source, Distributing("R", {"/Archive/Gemeinsam/Quelle 2"}));
  RuleCopyOptions options;
  options.EnUpdRouteArcs = options.EnCreateArcs = true;
  Run(options);
  EXPECT_EQ(ArrivedTargets(), List{"/Archive/Gemeinsam/Quelle 2"});
  EXPECT_FALSE(Exists("/Archive/Gemeinsam/Ziel 2"));
}

TEST_F(RuleCopyTest, AMissingArchiveIsMadeOnlyWhenAskedFor) {
  Create(*Create(*source, "2026"), "Mai");
  Put(*source, Distributing("R", {"/Archive/Gemeinsam/Quelle/2026/Mai"}));
  RuleCopyOptions options;
  options.EnUpdRouteArcs = true;
  Run(options);
  EXPECT_TRUE(NamesOf(*target).empty());
  EXPECT_FALSE(Exists("/Archive/Gemeinsam/Ziel/2026"));
  options.EnCreateArcs = true;
  Run(options);
  EXPECT_EQ(ArrivedTargets(), List{"/Archive/Gemeinsam/Ziel/2026/Mai"});
  EXPECT_TRUE(Exists("/Archive/Gemeinsam/Ziel/2026/Mai"));
}

TEST_F(RuleCopyTest, ATargetThatCannotBeAdaptedIsClearedAndTheFirstOneStillCounts) {
  Create(*source, "Eins");
  Create(*source, "Zwei");
  Create(*target, "Eins");
  Put(*source, Distributing("R", {"/Archive/Gemeinsam/Quelle/Eins", "/Archive/Gemeinsam/Quelle/Zwei"}));
  RuleCopyOptions options;
  options.EnUpdRouteArcs = true;
  Run(options);
  EXPECT_EQ(ArrivedTargets(), (List{"/Archive/Gemeinsam/Ziel/Eins", ""}));
}

TEST_F(RuleCopyTest, ARulePathIsWalkedWithAndWithoutSlashesAroundIt) {
  for (const char* path : {"/Archive/Gemeinsam/Ablage/", "Archive/Gemeinsam/Ablage"}) {
    const auto found = AdaptRuleTarget(Context(), {}, path, "R");
    ASSERT_TRUE(found) << path;
    EXPECT_EQ(found->FullPath(), "/Archive/Gemeinsam/Ablage");
  }
  EXPECT_FALSE(AdaptRuleTarget(Context(), {}, "/Archive/Gemeinsam/Weg", "R"));
  EXPECT_FALSE(AdaptRuleTarget(Context(), {}, "", "R"));
}

TEST_F(RuleCopyTest, NoArchiveIsMadeBelowOneThatTheUserMayNotOpen) {
  const auto annas = (*session_.Account->GetSpecialArchive(store::special::OwnRoot))->FullPath();
  session_.Account = SignOn("bert");
  RuleCopyOptions options;
  options.EnCreateArcs = true;
  ASSERT_EQ(ErrorOf(session_.Account->GetArchive(annas)), store::store_error::NoAccess);
  EXPECT_FALSE(AdaptRuleTarget(Context(), options, annas + "/Neu", "R"));
  EXPECT_EQ(ErrorOf(anna_->GetArchive(annas + "/Neu")), store::store_error::NotFound);
}

// --- Moving. ---

TEST_F(RuleCopyTest, AMoveTakesAwayWhatArrived) {
  for (const char* name : {"A", "B", "C"}) Put(*source, Forwarding(name));
  Put(*source, Distributing("Ohne Ziel", {}));
  RuleCopyOptions options;
  options.Mode = CopyMode::Move;
  Run(options);
  EXPECT_EQ(NamesOf(*target), (List{"C", "B", "A"}));
  EXPECT_EQ(NamesOf(*source), List{"Ohne Ziel"});
  EXPECT_EQ(frontEnd_.ProgressTitles, List{"Regeln verschieben"});
}

TEST_F(RuleCopyTest, ARuleThatTheTargetCannotStoreStaysInTheSource) {
  Put(*source, Forwarding("Bleibt"));
  ASSERT_TRUE(fileSystem_->WriteFile(target->ID() + "\\archive.urt", "keine Regeln"));
  RuleCopyOptions options;
  options.Mode = CopyMode::Move;
  Run(options);
  EXPECT_EQ(NamesOf(*source), List{"Bleibt"});
  EXPECT_EQ(run_.counters.Errors, 1);
  EXPECT_NE(LogText().find(" - Bleibt -> "), std::string::npos) << LogText();
}

TEST_F(RuleCopyTest, AMoveNeedsTheRightToDelete) {
  Put(*source, Forwarding("A"));
  session_.Trustees &= ~store::trustee::DeleteArchives;
  RuleCopyOptions options;
  options.Mode = CopyMode::Move;
  Run(options);
  EXPECT_TRUE(NamesOf(*target).empty());
  EXPECT_EQ(NamesOf(*source), List{"A"});
  EXPECT_EQ(run_.counters.Errors, 1);
}

TEST_F(RuleCopyTest, AnotherRuleAtTheMarkedPositionIsLeftAlone) {
  for (const char* name : {"A", "B"}) Put(*source, Forwarding(name));
  const std::vector<MarkedRule> marked = {{0, "A"}};
  ASSERT_TRUE((*source->Rules().Item(0))->Delete());
  RuleCopyOptions options;
  options.Mode = CopyMode::Move;
  RunRuleCopy(Context(), options, {source, marked}, target);
  EXPECT_EQ(NamesOf(*source), List{"B"});
  EXPECT_TRUE(NamesOf(*target).empty());
  EXPECT_EQ(run_.counters.Errors, 1);
}

// --- The run_. ---

TEST_F(RuleCopyTest, TheSummaryCountsTheRules) {
  for (const char* name : {"A", "B"}) Put(*source, Forwarding(name));
  Run();
  EXPECT_EQ(frontEnd_.ProgressTitles, List{"Regeln kopieren"});
  EXPECT_EQ(frontEnd_.ItemTexts, (List{"B", "A"}));
  EXPECT_EQ(frontEnd_.ProgressClosed, 1);
  ASSERT_EQ(frontEnd_.Boxes.size(), 1u);
  EXPECT_EQ(frontEnd_.Boxes[0].Title, "Beendet");
  EXPECT_EQ(frontEnd_.Boxes[0].Text, "2 Regel(n)\r\nmit 0 Fehler(n)\r\nin 00:00:00 s kopiert/verschoben");
}

TEST_F(RuleCopyTest, ACancelEndsBetweenTwoRules) {
  for (const char* name : {"A", "B", "C"}) Put(*source, Forwarding(name));
  frontEnd_.CancelAtPump = 2;
  RuleCopyOptions options;
  options.Mode = CopyMode::Move;
  Run(options);
  EXPECT_EQ(NamesOf(*target), List{"C"});
  EXPECT_EQ(NamesOf(*source), (List{"A", "B"}));
}

TEST_F(RuleCopyTest, ThePendingCancelOfARunStopsTheNext) {
  Put(*source, Forwarding("A"));
  run_.RequestCancel();
  Run();
  EXPECT_TRUE(NamesOf(*target).empty());
  EXPECT_TRUE(frontEnd_.ProgressTitles.empty());
}

TEST_F(RuleCopyTest, TheLogOfTheRunBeforeGoesWhenTheSettingsSaySo) {
  run_.LogError("alt", std::int64_t{1}, "alt", run::Severity::Error);
  Operation operation = Context();
  operation.ClearErrorLog = true;
  RunRuleCopy(operation, {}, {source, {}}, target);
  EXPECT_FALSE(run_.ErrorLogExists());
}

TEST_F(RuleCopyTest, AnArchiveIsNoTargetOfItsOwnRules) {
  Put(*source, Forwarding("A"));
  target = Open("/archive/gemeinsam/QUELLE");
  Run();
  EXPECT_EQ(NamesOf(*source), List{"A"});
  ASSERT_EQ(frontEnd_.Boxes.size(), 1u);
  EXPECT_EQ(frontEnd_.Boxes[0].Title, "Rekursive Kopie");
}

TEST_F(RuleCopyTest, ASubArchiveMayHaveTheRulesOfItsParent) {
  Put(*source, Forwarding("A"));
  target = Create(*source, "Unten");
  Run();
  EXPECT_EQ(NamesOf(*target), List{"A"});
}

TEST(ArchiveBranch, ReachesUpToABackslash) {
  EXPECT_TRUE(IsSameArchiveBranch(R"(\\S\DAVID\ARCHIVE\IN)", R"(\\s\david\archive\in)"));
  EXPECT_TRUE(IsSameArchiveBranch(R"(\\S\DAVID\ARCHIVE\IN)", R"(S\DAVID:archive\in\sub)"));
  EXPECT_FALSE(IsSameArchiveBranch(R"(\\S\DAVID\ARCHIVE\IN)", R"(\\S\DAVID\ARCHIVE\INBOX)"));
  EXPECT_FALSE(IsSameArchiveBranch(R"(\\S\DAVID\ARCHIVE\IN\SUB)", R"(\\S\DAVID\ARCHIVE\IN)"));
}

// --- Deleting. ---

TEST_F(RuleCopyTest, MarkedRulesGoAndTheOthersKeepTheirOrder) {
  for (const char* name : {"A", "B", "C", "D"}) Put(*source, Forwarding(name));
  RunDeleteRules(Context(), {source, {{0, "A"}, {2, "C"}}});
  EXPECT_EQ(NamesOf(*source), (List{"B", "D"}));
  EXPECT_EQ(frontEnd_.ProgressTitles, List{"Regeln löschen"});
  EXPECT_EQ(frontEnd_.ItemTexts, (List{"C", "A"}));
  EXPECT_TRUE(frontEnd_.Boxes.empty());
}

TEST_F(RuleCopyTest, DeletingNeedsTheRight) {
  Put(*source, Forwarding("A"));
  session_.Trustees &= ~store::trustee::DeleteArchives;
  RunDeleteRules(Context(), {source, Marked(*source)});
  EXPECT_EQ(NamesOf(*source), List{"A"});
  ASSERT_EQ(frontEnd_.Boxes.size(), 1u);
  EXPECT_EQ(frontEnd_.Boxes[0].Text, "mit 1 Fehler(n) (siehe Fehlerprotokoll) gelöscht");
}

TEST_F(RuleCopyTest, ARuleThatIsGoneByNowIsLoggedAndTheOthersGo) {
  for (const char* name : {"A", "B"}) Put(*source, Forwarding(name));
  RunDeleteRules(Context(), {source, {{0, "A"}, {1, "B"}, {2, "C"}}});
  EXPECT_TRUE(NamesOf(*source).empty());
  EXPECT_EQ(run_.counters.Errors, 1);
}

}  // namespace
}  // namespace velmora::operations
