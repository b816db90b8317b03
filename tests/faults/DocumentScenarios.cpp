#include "Scenarios.h"

#include <velum/commands/Command.h>
#include <velum/commands/CommandFactory.h>
#include <velum/commands/CommandStack.h>
#include <velum/core/Exception.h>
#include <velum/core/TypedObject.h>
#include <velum/files/Archive.h>
#include <velum/files/ParamList.h>
#include <velum/files/PrimData.h>
#include <velum/files/WksStore.h>

#include <list>
#include <memory>
#include <utility>
#include <vector>

namespace vlm::faults {
namespace {

const std::string kLong(100, 'x');

/// A place in a graph of objects, which leads to others.
class Station : public CTypedObject {
 public:
  explicit Station(std::string text = "") : name(std::move(text)) {}

  const CTypeInfo* GetTypeId() const override { return &kType; }
  void Serialize(Archive& archive) override {
    archive.Transfer(name);
    archive.TransferObject(next);
  }

  std::string name;
  std::shared_ptr<Station> next;

 private:
  static const CTypeInfo kType;
};

const CTypeInfo Station::kType(
    "Station of a line", []() -> void* { return static_cast<CTypedObject*>(new Station); },
    CTypedObject::GetClassTypeId());

/// A chain of stations, each shared with the list.
std::vector<std::shared_ptr<Station>> Line(int count) {
  std::vector<std::shared_ptr<Station>> line;
  for (int i = 0; i < count; ++i) {
    line.push_back(std::make_shared<Station>(kLong + std::to_string(i)));
    if (i > 0) line[static_cast<std::size_t>(i) - 1]->next = line.back();
  }
  return line;
}

std::string Stored(std::vector<std::shared_ptr<Station>>& line) {
  Archive storing;
  storing.OpenMem();
  for (auto& station : line) storing.TransferObject(station);
  storing.SyncCheck();
  return {reinterpret_cast<const char*>(storing.GetBuffer()), storing.GetSize()};
}

/// Appends to a text, and takes it back.
class Append : public Command {
 public:
  explicit Append(std::string& target) : target_(target) {}

  std::unique_ptr<Command> Clone() const override { return std::make_unique<Append>(*this); }

 private:
  GString KeyImpl() const override { return "Append a letter to the text"; }
  bool UndoRedoableImpl() const override { return true; }
  StatusCode DoImpl() override {
    target_ += 'x';
    return STATUS_SUCCESS;
  }
  StatusCode UndoImpl() override {
    target_.pop_back();
    return STATUS_SUCCESS;
  }
  StatusCode RedoImpl() override { return DoImpl(); }

  std::string& target_;
};

std::string theText;

class AppendFactory : public CommandFactory {
 public:
  AppendFactory() : CommandFactory("Append a letter to the text", *this) {}
  std::unique_ptr<Command> ConstructProduct() const override {
    return std::make_unique<Append>(theText);
  }
};

const Scenario kScenarios[] = {
    {"ADocumentThatIsStored",
     [] {
       auto line = Line(20);
       return Stored(line);
     }},
    {"ADocumentThatIsLoaded",
     [] {
       auto line = Line(20);
       static const std::string bytes = Stored(line);
       std::vector<std::shared_ptr<Station>> loaded(line.size());
       Archive loading;
       loading.OpenMem(reinterpret_cast<const unsigned char*>(bytes.data()),
                       static_cast<unsigned int>(bytes.size()));
       for (auto& station : loaded) loading.TransferObject(station);
       loading.SyncCheck();
       return loaded.front()->next->name + loaded.back()->name;
     }},
    {"ValuesInAnArchive",
     [] {
       Archive storing;
       storing.OpenMem();
       std::wstring wide(300, L'\u03BB');
       std::string narrow = kLong;
       storing.Transfer(wide);
       storing.Transfer(narrow);
       Archive loading;
       loading.OpenMem(storing.GetBuffer(), storing.GetSize());
       std::wstring again;
       loading.Transfer(again);
       loading.Transfer(narrow);
       return std::to_string(again.size()) + narrow;
     }},
    {"AHistoryOfCommands",
     [] {
       std::string text;
       CommandStack history(5);
       for (int i = 0; i < 8; ++i) {
         const std::size_t before = history.size();
         const auto command = std::make_shared<Append>(text);
         try {
           history.Do(command);
         } catch (...) {
           if (history.size() != before) throw Exception("Test", "", 0, ERR_INTERNAL, "changed");
           throw;
         }
       }
       history.Undo();
       history.Undo();
       history.Redo();
       return text + history.UndoLabel().String() + history.RedoLabel().String();
     }},
    {"ACommandMadeByName",
     [] {
       static const AppendFactory factory;
       const auto command = CommandFactory::Construct("append a LETTER to the text");
       std::list<std::pair<GString, GString>> options;
       command->EnumerateOptions(options);
       const bool isKnown = command->Option("ProgressEnabled or another long name", "false");
       return command->Label().String() + std::to_string(options.size()) + (isKnown ? "known" : "");
     }},
    {"AListOfParameters",
     [] {
       CParamList list;
       list.Set("The scale of the picture in the middle", 2.5);
       list.SetN("Item of the list of items", 3, kLong.c_str());
       const CParamList copy = list;
       GString text;
       GString number;
       if (!copy.GetN("Item of the list of items", 3, text)) throw Refused();
       copy.Get("The scale of the picture in the middle", number);
       return text.String() + number.String();
     }},
    {"AWorksheet",
     [] {
       CWksStore wells;
       for (unsigned int row = 0; row < 40; ++row) {
         wells.SetCell(row, row % 3, kLong.c_str());
         wells.SetCell(row, 3, row / 7.0);
       }
       CWksStore copy = wells;
       copy.SetCell(0, 0, "other");
       std::string all = wells.GetCell(0, 0) + copy.GetCell(0, 0);
       for (const std::string& text : copy.GetRow(5)) all += text;
       return all;
     }},
    {"NumbersOfAnyType",
     [] {
       const CPrimData level = 1.2345678901234567e-300;
       return level.GetDataAsString().String();
     }},
};

}  // namespace

std::span<const Scenario> DocumentScenarios() { return kScenarios; }

}  // namespace vlm::faults
