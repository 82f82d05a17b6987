// Random operations on a store, held against a model of the tree after each: as a fresh process reads the
// store from the disk, and as a check of the whole store finds it.
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <functional>
#include <optional>
#include <random>

#include "base/text.h"
#include "operations/rule_copy.h"
#include "operations_fixture.h"
#include "tree_model.h"

namespace velmora::operations {
namespace {

constexpr const char* PlaygroundPath = "/Archive/Spiel";
constexpr std::size_t LargestTree = 60;  // archives and links, so that trees are copied quickly

std::string KeyOf(const store::DvArchive& archive) {
  return FoldCase(StripBackslash(NormalizePath(archive.ID())));
}

// What the store holds below an archive, in the words of the model.
Node ReadTree(store::DvArchive& archive) {
  auto node = std::make_shared<ModelArchive>();
  node->Name = archive.DisplayName().value_or("?");
  node->Id = KeyOf(archive);
  node->IsLink = archive.IsShortCut();
  if (node->IsLink) return node;
  node->IsHidden = archive.Hidden().value_or(false);
  const auto entries = archive.GetEntries(store::filter_preset::None);
  for (int i = 0; entries && i < (*entries)->Count(); ++i) {
    const auto item = (*entries)->Item(i);
    node->Entries.push_back(item ? TitleOf(**item) : item.error().Text);
  }
  for (int i = 0; i < archive.Rules().Count().value_or(0); ++i)
    node->Rules.push_back((*archive.Rules().Item(i))->Data().Name);
  const auto subs = archive.SubArchives();
  if (!subs) node->Name += " " + subs.error().Text;
  for (const auto& sub : subs.value_or(std::vector<std::shared_ptr<store::DvArchive>>()))
    node->Subs.push_back(ReadTree(*sub));
  return node;
}

class RandomOperationsTest : public OperationsFixture {
 public:
  RandomOperationsTest() : model_(ReadTree(*Create(*root_, "Spiel"))) {}

  // --- Chance. ---
  std::size_t Below(std::size_t bound) {
    return std::uniform_int_distribution<std::size_t>(0, bound - 1)(random_);
  }
  bool Toss() { return Below(2) == 1; }
  std::string Word() { return std::string(1, static_cast<char>('A' + Below(6))); }
  Node AnyArchive() {
    std::vector<Node> archives{model_.Root()};
    for (const auto& place : model_.Places()) {
      if (!place.Archive->IsLink) archives.push_back(place.Archive);
    }
    return archives[Below(archives.size())];
  }
  std::optional<TreeModel::Place> AnyPlace() {
    const auto places = model_.Places();
    if (places.empty()) return std::nullopt;
    return places[Below(places.size())];
  }
  ArchivePointer Opened(const Node& node) { return Open(node->Id); }
  // Where the node stands among its parent's subs is where its record stands.
  static Object MarkOf(const Node& node) {
    return {Object::Kind::Archive, 0, node->Id, node->IsLink, node->Name};
  }

  // --- The operations: each on the store and on the model. ---
  void CreateOne() {
    if (model_.Places().size() >= LargestTree) return;
    const Node parent = AnyArchive();
    auto node = std::make_shared<ModelArchive>();
    node->Name = Word();
    node->Id = KeyOf(*Create(*Opened(parent), node->Name));
    parent->Subs.push_back(node);
    done_ = "create " + node->Id;
  }
  void DeliverOne() {
    const Node node = AnyArchive();
    const auto subject = "m" + std::to_string(++number_);
    Deliver(*Opened(node), subject);
    node->Entries.push_back(subject);
    done_ = "deliver " + node->Id;
  }
  void LinkOne() {
    if (model_.Places().size() >= LargestTree) return;
    const Node parent = AnyArchive(), target = AnyArchive();
    auto link = std::make_shared<ModelArchive>();
    link->Name = "L" + std::to_string(++number_);
    link->Id = target->Id;
    link->IsLink = true;
    AddLink(*Opened(parent), link->Name, *Opened(target));
    parent->Subs.push_back(link);
    done_ = "link in " + parent->Id + " to " + target->Id;
  }
  void RuleOne() {
    const Node node = AnyArchive();
    auto rule = Opened(node)->Rules().Add("r" + std::to_string(++number_));
    (*rule)->Data().Forward = true;
    EXPECT_TRUE((*rule)->Update());
    node->Rules.push_back("r" + std::to_string(number_));
    done_ = "rule in " + node->Id;
  }
  void RenameOne() {
    const Node node = AnyArchive();
    if (node == model_.Root()) return;
    node->Name = Word();
    node->IsHidden = Toss();
    const auto archive = Opened(node);
    EXPECT_TRUE(archive->SetDisplayName(node->Name));
    EXPECT_TRUE(archive->SetHidden(node->IsHidden));
    EXPECT_TRUE(archive->Update());
    done_ = "rename " + node->Id;
  }
  // The directory stays where it is.
  void RelocateOne() {
    const auto place = AnyPlace();
    const Node target = AnyArchive();
    if (!place || place->Archive->IsLink || target == place->Parent) return;
    const auto moved = Opened(place->Archive)->Move(*Opened(target));
    if (!moved) return;  // into itself
    std::erase(place->Parent->Subs, place->Archive);
    target->Subs.push_back(place->Archive);
    done_ = "relocate " + place->Archive->Id + " to " + target->Id;
  }
  void CopyOne() {
    const auto place = AnyPlace();
    const Node target = AnyArchive();
    if (!place) return;
    StoreCopyOptions options;
    options.Mode = Toss() || model_.Places().size() >= LargestTree ? CopyMode::Move : CopyMode::Copy;
    options.EnDelArchives = Toss() || model_.Places().size() >= LargestTree;
    options.EnCopyOnlyArcs = Below(5) == 0;
    options.EnDblArcNames = Toss();
    options.EnLinkedArcs = Below(3) == 0;
    options.EnSaveOrgArcs = Toss();
    options.EnCpyProp = Toss();
    options.EnRoutings = Toss();
    done_ = fmt::format("{} {} to {}: del {} only {} merge {} linked {} org {} prop {} rules {}",
                        options.Mode == CopyMode::Move ? "move" : "copy", place->Archive->Id, target->Id,
                        options.EnDelArchives, options.EnCopyOnlyArcs, options.EnDblArcNames,
                        options.EnLinkedArcs, options.EnSaveOrgArcs, options.EnCpyProp, options.EnRoutings);
    RunStoreCopy(Context(), options, {Opened(place->Parent), {MarkOf(place->Archive)}}, Opened(target));
    model_.Copy(*place, target, options);
  }
  void DeleteOne() {
    const auto place = AnyPlace();
    if (!place) return;
    const StoreDeleteOptions options{Below(4) > 0, Below(3) == 0, Below(4) == 0};
    done_ = fmt::format("delete {}: structure {} physically {} linked {}", place->Archive->Id,
                        options.EnDelArchives, options.EnPhysErase, options.EnLinkedArcs);
    RunStoreDelete(Context(), options, {Opened(place->Parent), {MarkOf(place->Archive)}});
    model_.Delete(*place, options);
  }
  void CopyRulesOne() {
    const Node source = AnyArchive(), target = AnyArchive();
    if (source == target || source->Rules.empty()) return;
    RuleCopyOptions options;
    options.Mode = Toss() ? CopyMode::Move : CopyMode::Copy;
    std::vector<MarkedRule> marked;
    for (std::size_t i = 0; i < source->Rules.size(); ++i)
      marked.push_back({static_cast<int>(i), source->Rules[i]});
    done_ = "rules of " + source->Id + " to " + target->Id;
    RunRuleCopy(Context(), options, {Opened(source), marked}, Opened(target));
    target->Rules.insert(target->Rules.end(), source->Rules.rbegin(), source->Rules.rend());
    if (options.Mode == CopyMode::Move) source->Rules.clear();
  }
  // A link to nothing is what a check reports.
  void RemoveDanglingLinks() {
    model_.RemoveDanglingLinks();
    std::function<void(store::DvArchive&)> remove = [&](store::DvArchive& archive) {
      const auto subs = archive.SubArchives();
      for (const auto& sub : *subs) {
        if (!sub->IsShortCut()) remove(*sub);
        if (sub->IsShortCut() && !session_.Account->GetArchive(sub->ID())) {
          EXPECT_TRUE(sub->Delete());
        }
      }
    };
    remove(*Open(PlaygroundPath));
  }

  // --- The comparison. ---
  // What a process that has nothing of this one's memory finds: the tree, and what the check reports.
  std::string AsAFreshProcessSeesIt() {
    EXPECT_TRUE(session_.Account->Commit());
    int pipe[2];
    EXPECT_EQ(::pipe(pipe), 0);
    const auto child = fork();
    if (child == 0) {
      const auto files = platform::MakeHostFileSystem({store::embedded::MappingOf(location_)});
      const auto account =
          store::embedded::OpenEmbeddedApi(*files, platform::SystemClock(), {location_}, "anna")->Logon("");
      std::string text = TreeModel(ReadTree(*(*(*account)->GetArchive(PlaygroundPath)))).Dump();
      store::embedded::CheckStore(*files, platform::SystemClock(), location_,
                                  [&](const store::embedded::StoreFinding& finding) {
                                    if (!finding.IsNote) text += finding.Subject + ": " + finding.Text + "\n";
                                  });
      const auto written = write(pipe[1], text.data(), text.size());
      _exit(written == static_cast<ssize_t>(text.size()) ? 0 : 1);
    }
    close(pipe[1]);
    std::string text, part(65'536, '\0');
    for (ssize_t count = 0; (count = read(pipe[0], part.data(), part.size())) > 0;)
      text.append(part, 0, static_cast<std::size_t>(count));
    close(pipe[0]);
    int status = 0;
    waitpid(child, &status, 0);
    return status == 0 ? text : "the process failed";
  }
  // The directories that the store has given to what was made.
  void TakeOverIds() {
    const std::function<void(const Node&, const Node&)> take = [&](const Node& node, const Node& stored) {
      node->Id = stored->Id;
      for (std::size_t i = 0; i < node->Subs.size(); ++i) take(node->Subs[i], stored->Subs[i]);
    };
    take(model_.Root(), ReadTree(*Open(PlaygroundPath)));
  }

  std::mt19937 random_;
  TreeModel model_;
  std::string done_;
  int number_ = 0;
};

// VELMORA_RANDOM_OPERATIONS and VELMORA_RANDOM_SEED: how many operations, and the first seed.
std::size_t FromEnvironment(const char* name, std::size_t standard) {
  const char* const text = getenv(name);
  return text == nullptr ? standard : std::strtoul(text, nullptr, 10);
}

TEST_F(RandomOperationsTest, StoreAndModelStayEqual) {
  using Step = void (RandomOperationsTest::*)();
  constexpr std::array<Step, 14> Steps = {
      &RandomOperationsTest::CreateOne,  &RandomOperationsTest::CreateOne,
      &RandomOperationsTest::CreateOne,  &RandomOperationsTest::DeliverOne,
      &RandomOperationsTest::DeliverOne, &RandomOperationsTest::DeliverOne,
      &RandomOperationsTest::LinkOne,    &RandomOperationsTest::RuleOne,
      &RandomOperationsTest::RenameOne,  &RandomOperationsTest::RelocateOne,
      &RandomOperationsTest::CopyOne,    &RandomOperationsTest::CopyOne,
      &RandomOperationsTest::DeleteOne,  &RandomOperationsTest::CopyRulesOne,
  };
  const std::size_t seed = FromEnvironment("VELMORA_RANDOM_SEED", 1);
  const std::size_t count = FromEnvironment("VELMORA_RANDOM_OPERATIONS", 200);
  random_.seed(static_cast<std::mt19937::result_type>(seed));
  for (std::size_t i = 0; i < count; ++i) {
    done_ = "nothing";
    const std::string before = model_.Dump(true);
    (this->*Steps[Below(Steps.size())])();
    RemoveDanglingLinks();
    ASSERT_EQ(AsAFreshProcessSeesIt(), model_.Dump())
        << "operation " << i << " of seed " << seed << ": " << done_ << "\nbefore:\n"
        << before << "\nlog:\n"
        << Log();
    TakeOverIds();
  }
}

}  // namespace
}  // namespace velmora::operations
