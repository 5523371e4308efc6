#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "support/DataFolder.h"
#include "support/StoredRecipes.h"

namespace larder::test {

// What the user's files must hold, byte by byte, kept as the bytes of each record.
struct RecordModel {
    std::vector<std::string> Records;  // each up to where the next one begins
    std::vector<StoredRecipe> Logical;

    void Add(const std::string& title, const std::string& rtf) {
        Records.push_back(title + "\r\n" + rtf + "\r\n");
        Logical.push_back({title, rtf});
    }
    // The last record is taken to have a byte less than it has.
    std::size_t RoomOf(std::size_t i) const {
        return Records[i].size() - (i + 1 == Records.size() ? 1 : 0);
    }
    // How long a body under this title is to be for the record to be so much longer than its room;
    // 8 where that would be less.
    std::size_t RtfBytes(std::size_t i, const std::string& title, std::int64_t longer) const {
        const auto room = static_cast<std::int64_t>(RoomOf(i));
        const auto rest = room + longer - static_cast<std::int64_t>(title.size()) - 4;
        return static_cast<std::size_t>(std::max<std::int64_t>(rest, 8));
    }
    // True when it was written over, false when the file was rewritten.
    bool Update(std::size_t i, const std::string& title, const std::string& rtf) {
        Logical[i] = {title, rtf};
        const bool last = i + 1 == Records.size();
        const std::size_t room = RoomOf(i);
        const std::size_t needed = title.size() + rtf.size() + 4;
        if (needed <= room) {
            const std::string oldEnd = Records[i].substr(room);
            Records[i] = title + "\r\n" + rtf + std::string(room - needed, ' ') + "\r\n" + oldEnd;
            return true;
        }
        if (i > 0) CloseLine(Records[i - 1]);
        Records[i] = title + "\r\n" + rtf + "\r\n";
        if (!last) CloseLine(Records.back());
        return false;
    }
    static void CloseLine(std::string& record) { record.replace(record.size() - 2, 2, "\r\n"); }

    std::string Text() const {
        std::string text;
        for (const std::string& record : Records)
            text += record;
        return text;
    }
    std::string Index() const {
        std::vector<std::int32_t> positions;
        std::int32_t position = 1;
        for (const std::string& record : Records) {
            positions.push_back(position);
            position += static_cast<std::int32_t>(record.size());
        }
        return IndexBytes(positions);
    }
};

}  // namespace larder::test
