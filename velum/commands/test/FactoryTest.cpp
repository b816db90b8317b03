#include <velum/commands/CommandFactory.h>
#include <velum/commands/ModalElementFactory.h>
#include <velum/commands/ModelessElementFactory.h>
#include <velum/commands/ProgressFactory.h>

#include <gtest/gtest.h>

#include <exception>
#include <memory>
#include <string>

// What a program might do that hides its own names: have the families' code in itself. The
// registries stay those of the library, in which the families' constructors stand.
template class vlm::Factory<vlm::CommandFactory, vlm::Command, vlm::GString, vlm::StringLess>;
template class vlm::DefaultProductFactory<vlm::ProgressFactory, vlm::IProgress, vlm::GString>;

namespace vlm {
namespace {

class Idle : public Command {
 public:
  std::unique_ptr<Command> Clone() const override { return std::make_unique<Idle>(*this); }

 private:
  StatusCode DoImpl() override { return STATUS_SUCCESS; }
  StatusCode UndoImpl() override { return STATUS_SUCCESS; }
  StatusCode RedoImpl() override { return STATUS_SUCCESS; }
  GString KeyImpl() const override { return "Idle"; }
  bool UndoRedoableImpl() const override { return true; }
};

class Dialog : public ModalElement {
  StatusCode ExecuteImpl() override { return STATUS_SUCCESS; }
};

class Panel : public ModelessElement {
  bool IsCreatedImpl() const override { return false; }
  void CreateImpl() override {}
  StatusCode DestroyImpl() override { return STATUS_SUCCESS; }
  void HideImpl() override {}
  void ShowImpl() override {}
};

class Bar : public IProgress {
 public:
  explicit Bar(int maker) : made(maker) {}
  void Begin(GString, double) override {}
  void Advance(double) override {}
  void Text(GString) override {}
  bool IsCanceled() const override { return made < 0; }
  void End() override {}

  const int made;
};

class IdleFactory : public CommandFactory {
 public:
  IdleFactory() : CommandFactory("Idle", *this) {}
  std::unique_ptr<Command> ConstructProduct() const override { return std::make_unique<Idle>(); }
};

class DialogFactory : public ModalElementFactory {
 public:
  DialogFactory() : ModalElementFactory("Dialog", *this) {}
  std::unique_ptr<ModalElement> ConstructProduct() const override {
    return std::make_unique<Dialog>();
  }
};

class PanelFactory : public ModelessElementFactory {
 public:
  PanelFactory() : ModelessElementFactory("Panel", *this) {}
  std::unique_ptr<ModelessElement> ConstructProduct() const override {
    return std::make_unique<Panel>();
  }
};

class BarFactory : public ProgressFactory {
 public:
  BarFactory(const char* key, int number) : ProgressFactory(key, this), number_(number) {}
  std::unique_ptr<IProgress> ConstructProduct() const override {
    return std::make_unique<Bar>(number_);
  }

 private:
  int number_;
};

const IdleFactory idleFactory;
const DialogFactory dialogFactory;
const PanelFactory panelFactory;
const BarFactory firstBar("Bar", 1);
const BarFactory otherBar("Other", 2);
const BarFactory barInItsPlace("Bar", 3);

TEST(CommandFactory, FindsKeysInAnyCase) {
  EXPECT_TRUE(CommandFactory::CanConstruct("Idle"));
  EXPECT_TRUE(CommandFactory::CanConstruct("iDLE"));
  EXPECT_FALSE(CommandFactory::CanConstruct("Idl"));
  EXPECT_EQ(CommandFactory::Construct("IDLE")->Key(), "Idle");
}

TEST(ElementFactories, FindExactKeysOnly) {
  EXPECT_TRUE(ModalElementFactory::CanConstruct("Dialog"));
  EXPECT_FALSE(ModalElementFactory::CanConstruct("dialog"));
  EXPECT_FALSE(ModalElementFactory::CanConstruct("Panel")) << "each family has its own registry";
  EXPECT_EQ(ModalElementFactory::Construct("Dialog")->Execute(), STATUS_SUCCESS);
  EXPECT_FALSE(ModelessElementFactory::CanConstruct("PANEL"));
  EXPECT_EQ(ModelessElementFactory::Construct("Panel")->Destroy(), STATUS_FAILURE);
}

TEST(ProgressFactory, TheFirstMakesWhatIsAskedForWithoutAKey) {
  const auto maker = [](const std::unique_ptr<IProgress>& made) {
    return dynamic_cast<const Bar&>(*made).made;
  };
  EXPECT_EQ(maker(ProgressFactory::Construct()), 1);
  EXPECT_EQ(maker(ProgressFactory::Construct("Bar")), 3);
  EXPECT_EQ(maker(ProgressFactory::Construct("Other")), 2);
  EXPECT_FALSE(ProgressFactory::CanConstruct("bar"));
}

TEST(Factories, RefuseKeysThatAreNotThere) {
  const auto says = [](auto work) -> std::string {
    try {
      work();
    } catch (const std::exception& error) {
      return error.what();
    }
    return "";
  };
  const char* const kText = "Invalid factory key requested.";
  EXPECT_EQ(says([] { static_cast<void>(CommandFactory::CanConstruct("")); }), kText);
  EXPECT_EQ(says([] { static_cast<void>(CommandFactory::Construct("")); }), kText);
  EXPECT_EQ(says([] { static_cast<void>(ModalElementFactory::Construct("none")); }), kText);
  EXPECT_EQ(says([] { static_cast<void>(ProgressFactory::CanConstruct("")); }), kText);
}

}  // namespace
}  // namespace vlm
