#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "core/UnsettledFixture.h"

namespace larder::test {

// A run whose data folder, or a file of it, becomes another one than at its start.
class SwappedFolder : public UnsettledReads {
  protected:
    SwappedFolder() { broken = false; }

    // An empty folder in the place of the real one, and the real one again.
    void GoAway() const {
        std::filesystem::rename(data, folder.Native("Away"));
        std::filesystem::create_directory(data);
    }
    void ComeBack() {
        std::filesystem::remove_all(data);
        std::filesystem::rename(folder.Native("Away"), data);
        session.Disc.Asked.clear();  // for the recipes that were not there
    }
    // Recipe 3 becomes longer, and the index of the new text cannot take its place.
    void RewriteTheText() {
        broken = true;
        RefuseRenameTo(session, "Custom Recipes Index.ind");
        EXPECT_TRUE(session.Update(3, rewritten[2].Title, rewritten[2].Body));
        session.Files.CloseAll();
    }
    void ExpectTheNextIsAdded(Recipes expected) {
        session.Messages.clear();
        EXPECT_TRUE(session.Add("New", "{}"));
        expected.push_back({"New", "{}"});
        EXPECT_EQ(session.Store.TotalNumRecords, static_cast<std::int32_t>(expected.size()));
        EXPECT_EQ(ReadIn(session), expected);
        EXPECT_EQ(RecipesIn(BytesOf(data)), expected);
    }

    const std::filesystem::path data = folder.Native("Data");
    const Recipes rewritten = [this] {
        Recipes recipes = before;
        recipes[2] = {"Conger", "{\\rtf1 Conger}"};
        return recipes;
    }();
};

}  // namespace larder::test
