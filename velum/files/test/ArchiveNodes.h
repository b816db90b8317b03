#pragma once

/// \file
/// Objects of a graph as applications have them, for tests of the archive.
///
///     const vlm::test::Nodes nodes;  // deletes them all, whatever became of their pointers
///     auto* const node = new vlm::test::Node;
///     archive.TransferObject(node);

#include <velum/core/TypedObject.h>
#include <velum/files/Archive.h>

#include <memory>
#include <string>
#include <unordered_set>

namespace vlm::test {

/// Knows its objects that were made and not deleted.
template <class T>
class Tracked : public CTypedObject {
 public:
  Tracked() { Alive().insert(this); }
  Tracked(const Tracked&) = delete;
  Tracked& operator=(const Tracked&) = delete;
  ~Tracked() override { Alive().erase(this); }

  static std::unordered_set<Tracked*>& Alive() {
    static std::unordered_set<Tracked*> objects;
    return objects;
  }
  static void DeleteAll() {
    while (!Alive().empty()) delete *Alive().begin();
  }
};

/// Something that nodes share.
class Leaf : public Tracked<Leaf> {
 public:
  double weight = 0;  ///< transferred

  [[nodiscard]] const CTypeInfo* GetTypeId() const override { return &kType; }
  void Serialize(Archive& archive) override { archive.Transfer(weight); }

 private:
  static const CTypeInfo kType;
};

inline const CTypeInfo Leaf::kType{"Leaf",
                                   []() -> void* { return static_cast<CTypedObject*>(new Leaf); },
                                   CTypedObject::GetClassTypeId()};

/// A node with plain pointers to others, which own nothing, and a shared leaf.
class Node : public Tracked<Node> {
 public:
  int number = 0;  ///< transferred, like all that follows
  std::string text;
  std::wstring wide;
  Node* next = nullptr;
  CTypedObject* other = nullptr;
  std::shared_ptr<Leaf> leaf;

  [[nodiscard]] const CTypeInfo* GetTypeId() const override { return &kType; }
  void Serialize(Archive& archive) override {
    archive.Transfer(number);
    archive.Transfer(text);
    archive.Transfer(wide);
    archive.TransferObject(next);
    archive.TransferObject(other);
    archive.TransferObject(leaf);
    if (number % 2 != 0) archive.SyncCheck();
  }

 private:
  static const CTypeInfo kType;
};

inline const CTypeInfo Node::kType{"Node",
                                   []() -> void* { return static_cast<CTypedObject*>(new Node); },
                                   CTypedObject::GetClassTypeId()};

/// Deletes all nodes, which let go of the leaves that they share, and then all other leaves, when
/// it goes.
class Nodes {
 public:
  Nodes() = default;
  Nodes(const Nodes&) = delete;
  Nodes& operator=(const Nodes&) = delete;
  ~Nodes() {
    Node::DeleteAll();
    Leaf::DeleteAll();
  }
};

}  // namespace vlm::test
