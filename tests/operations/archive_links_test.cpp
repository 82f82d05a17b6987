#include "operations/archive_links.h"

#include <gtest/gtest.h>

#include "operations/archive_deletion.h"
#include "operations_fixture.h"

namespace velmora::operations {
namespace {

using ArchiveLinksTest = OperationsFixture;

TEST_F(ArchiveLinksTest, AMarkedLinkIsTheLinkAndNotItsTarget) {
  AddLink(*source_, "Verweis", *target_);
  const auto link = Open("/Archive/Quelle")->SubArchives()->front();
  const auto opened = OpenMarkedArchive(Context(), {source_, {}}, Mark(*link, "Verweis"));
  ASSERT_TRUE(opened);
  EXPECT_TRUE((*opened)->IsShortCut());
  EXPECT_EQ((*opened)->ID(), target_->ID());
}

TEST_F(ArchiveLinksTest, ALinkWithoutTheListInWhichItStandsIsNotItsTarget) {
  AddLink(*source_, "Verweis", *target_);
  Deliver(*target_, "Bleibt");
  const auto link = Open("/Archive/Quelle")->SubArchives()->front();
  EXPECT_EQ(ErrorOf(OpenMarkedArchive(Context(), {nullptr, {}}, Mark(*link, "Verweis"))),
            store::store_error::NotFound);
  RunStoreDelete(Context(), {true, true, false}, {nullptr, {Mark(*link, "Verweis")}});
  EXPECT_TRUE(Exists("/Archive/Ziel"));
  EXPECT_EQ(Subjects("/Archive/Ziel"), List{"Bleibt"});
  EXPECT_EQ(run_.counters.Errors, 1);
}

}  // namespace
}  // namespace velmora::operations
