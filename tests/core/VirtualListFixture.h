#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "ListRecorder.h"
#include "lists/VirtualList.h"

namespace larder::test {

// A list with a small program around it.
class VirtualListTest : public ::testing::Test {
  protected:
    void Fill(const std::string& nums) {
        list.StringToNums(nums);
        recorder.Log.clear();
    }
    int Reports(const std::string& what) const {
        return static_cast<int>(std::count(recorder.Log.begin(), recorder.Log.end(), what));
    }

    ListRecorder recorder;
    ListTicket ticket;
    VirtualList list{recorder, ticket};
};

}  // namespace larder::test
