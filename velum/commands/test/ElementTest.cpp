#include <velum/commands/CommandManagerCriticalSection.h>
#include <velum/commands/ModalElement.h>
#include <velum/commands/ModelessElement.h>

#include <gmock/gmock.h>

#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace vlm {
namespace {

using ::testing::ElementsAre;

class Dialog : public ModalElement {
 public:
  std::vector<std::string> calls;

 private:
  StatusCode ExecuteImpl() override { return STATUS_CANCELED; }
  boost::any OptionImpl(const GString& key) const override { return GString("value of ") + key; }
  bool OptionImpl(const GString& key, const boost::any&) override {
    calls.push_back(key + " any");
    return true;
  }
  bool OptionImpl(const GString& key, const GString& value) override {
    calls.push_back(key + " text " + value);
    return true;
  }
  void ParentImpl(const boost::any& parent) override {
    calls.push_back("parent " + std::to_string(boost::any_cast<int>(parent)));
  }
};

/// An element that can be made to fail; without options of its own.
class Panel : public ModelessElement {
 public:
  bool fails = false;
  std::vector<std::string> calls;

 private:
  bool IsCreatedImpl() const override { return created_; }
  void CreateImpl() override {
    calls.emplace_back("create");
    created_ = !fails;
  }
  StatusCode DestroyImpl() override {
    calls.emplace_back("destroy");
    created_ = false;
    return STATUS_CANCELED;
  }
  void HideImpl() override { calls.emplace_back("hide"); }
  void ShowImpl() override { calls.emplace_back("show"); }

  bool created_ = false;
};

TEST(BaseElement, PassesOptionsOnWithTheKeyInSmallLetters) {
  Dialog dialog;
  EXPECT_TRUE(dialog.Option("Title", "Grid"));
  EXPECT_TRUE(dialog.Option("GuiEnabled", GString("0")));
  EXPECT_TRUE(dialog.Option("Rows", boost::any(7)));
  EXPECT_TRUE(dialog.Option("Name", boost::any(GString("A"))));
  EXPECT_FALSE(dialog.Option("", "Grid"));
  EXPECT_FALSE(dialog.Option("", boost::any(7)));
  EXPECT_EQ(boost::any_cast<GString>(dialog.Option("ROWS")), "value of rows");
  EXPECT_TRUE(dialog.Option("").empty());
  dialog.Parent(5);
  EXPECT_THAT(dialog.calls, ElementsAre("title text Grid", "guienabled text 0", "rows any",
                                        "name text A", "parent 5"));
  EXPECT_EQ(dialog.Execute(), STATUS_CANCELED);
}

TEST(BaseElement, TakesNoOptionByItself) {
  Panel panel;
  EXPECT_FALSE(panel.Option("title", "Grid"));
  EXPECT_FALSE(panel.Option("title", boost::any(1)));
  EXPECT_TRUE(panel.Option("title").empty());
  panel.Parent(5);
}

TEST(ModelessElement, DoesNothingBeforeItIsCreated) {
  Panel panel;
  panel.Show();
  panel.Hide();
  EXPECT_EQ(panel.Destroy(), STATUS_FAILURE);
  EXPECT_THAT(panel.calls, ElementsAre());
}

TEST(ModelessElement, IsCreatedOnceAndShownOnRequest) {
  Panel panel;
  panel.Create(false);
  panel.Create(false);
  panel.Create(true);
  panel.Hide();
  panel.Show();
  EXPECT_EQ(panel.Destroy(), STATUS_CANCELED);
  panel.Show();
  panel.Create(true);
  EXPECT_THAT(panel.calls,
              ElementsAre("create", "show", "hide", "show", "destroy", "create", "show"));
}

TEST(ModelessElement, IsNotShownWhenItCouldNotBeCreated) {
  Panel panel;
  panel.fails = true;
  panel.Create(true);
  EXPECT_THAT(panel.calls, ElementsAre("create"));
}

TEST(CCriticalSection, ExcludesOtherThreadsUntilItIsGivenUpAsOftenAsItWasTaken) {
  CCriticalSection& section = CommandManagerPrivate::CommandManagerCriticalSection::criticalSection;
  const auto freeForOthers = [&] {
    bool taken = false;
    std::thread([&] {
      taken = section.TryLock();
      if (taken) section.Unlock();
    }).join();
    return taken;
  };
  section.Lock();
  {
    const std::lock_guard<CCriticalSection> again(section);
    EXPECT_FALSE(freeForOthers());
  }
  EXPECT_FALSE(freeForOthers());
  section.Unlock();
  EXPECT_TRUE(freeForOthers());
}

}  // namespace
}  // namespace vlm
