#pragma once

#include <functional>
#include <string>
#include <vector>

#include "lists/GrowingListObserver.h"

namespace larder::test {

// The program around a list, as far as a list sees it: writes down what the list reports.
class ListRecorder : public GrowingListObserver {
  public:
    std::int16_t Lines = 1000;
    std::int32_t Original = 100;
    std::function<void()> OnEvents = [] {};
    std::function<void()> OnShowSame = [] {};
    std::function<bool(const std::string&)> Pictures = [](const std::string&) { return false; };
    std::function<std::string(std::int32_t)> Titles = [](std::int32_t num) {
        return "Title " + std::to_string(num);
    };
    bool WithoutTitleIsGone = true;   // and not merely unreadable
    bool WithoutTitleIsBlank = true;  // and has a record
    std::vector<std::string> Log;

    std::int16_t LinesOnScreen() const override { return Lines; }
    std::int32_t OriginalNumRecords() const override { return Original; }
    bool HasPicture(const std::string& strRecipeNum) const override {
        return Pictures(strRecipeNum);
    }
    std::string GetRecipeTitle(std::int32_t recipeNum) override { return Titles(recipeNum); }
    bool IsGone(std::int32_t /*recipeNum*/) override { return WithoutTitleIsGone; }
    bool IsBlank(std::int32_t /*recipeNum*/) override { return WithoutTitleIsBlank; }
    void ShowSame() override {
        Log.push_back("same");
        OnShowSame();
    }
    void DecorateWait(bool start, const std::string& what) override {
        Log.push_back((start ? "wait " : "done ") + what);
    }
    void UpdateScroll() override { Log.push_back("scroll"); }
    void ReportRecipesFound(const std::string& append) override {
        Log.push_back("found " + append);
    }
    void LetEventsRun() override { OnEvents(); }
};

}  // namespace larder::test
