#pragma once

/// \file
/// A list of named values in memory, texts inside and numbers at its edge.
///
///     vlm::CParamList list;
///     list.Set("Scale", 2.5);
///     list.SetN("Item", 3, "Gravel");  // named Item3
///     double scale = 1;
///     list.Get("Scale", scale);

#include <velum/core/Api.h>
#include <velum/core/GString.h>

#include <map>

namespace vlm {

/// Names and values, a map in byte order of the names. A value; a derived class may say where the
/// texts come from and go to.
///
/// Numbers are read as C's `scanf` does, with the point whatever the locale: white space is
/// skipped, anything may follow, and without a number the result is false and the value stays. A
/// whole number out of range gives the nearest one that there is; a negative `unsigned int` counts
/// down from 2^32.
///
/// | type | text |
/// |---|---|
/// | `int`, `unsigned int` | its digits |
/// | `double` | 17 significant digits, so that it comes back as it was; `INF`, `-INF`, `NAN` |
/// | `bool` | `1` or `0`; any number but 0 reads as true |
///
/// Threads: an object belongs to one thread at a time.
class VELUM_API CParamList : public std::map<GString, GString> {
 public:
  /// An empty list.
  CParamList();
  /// A copy of the map.
  CParamList(const CParamList&);
  virtual ~CParamList();

  /// The text of `key`; false, and `value` stays, if there is none.
  bool Get(const GString& key, GString& value) const;
  bool Get(const GString& key, int& value) const;           ///< Reads a whole number.
  bool Get(const GString& key, unsigned int& value) const;  ///< Reads a whole number from 0.
  bool Get(const GString& key, double& value) const;        ///< Reads a number.
  bool Get(const GString& key, bool& value) const;          ///< Reads a truth value.

  bool GetN(const GString& key, int n, GString& value) const;  ///< Reads `key` followed by `n`.
  bool GetN(const GString& key, int n, int& value) const;      ///< Reads `key` followed by `n`.
  bool GetN(const GString& key, int n,
            unsigned int& value) const;                       ///< Reads `key` followed by `n`.
  bool GetN(const GString& key, int n, double& value) const;  ///< Reads `key` followed by `n`.
  bool GetN(const GString& key, int n, bool& value) const;    ///< Reads `key` followed by `n`.

  void Set(const GString& key, const GString& value);  ///< Stores a text.
  void Set(const GString& key, const char* value);     ///< Stores a text; null is the empty one.
  void Set(const GString& key, int value);             ///< Stores a whole number.
  void Set(const GString& key, unsigned int value);    ///< Stores a whole number.
  void Set(const GString& key, double value);          ///< Stores a number.
  void Set(const GString& key, bool value);            ///< Stores a truth value.

  void SetN(const GString& key, int n, const GString& value);  ///< Stores `key` followed by `n`.
  void SetN(const GString& key, int n, const char* value);     ///< Stores `key` followed by `n`.
  void SetN(const GString& key, int n, int value);             ///< Stores `key` followed by `n`.
  void SetN(const GString& key, int n, unsigned int value);    ///< Stores `key` followed by `n`.
  void SetN(const GString& key, int n, double value);          ///< Stores `key` followed by `n`.
  void SetN(const GString& key, int n, bool value);            ///< Stores `key` followed by `n`.

  /// Takes a copy of another list's map.
  CParamList& operator=(const CParamList&);

 protected:
  /// Stores the text of `key` in place of the one that was there.
  virtual void DoSet(const GString& key, const GString& value);
  /// Copies the text of `key`; false, and `value` stays, if there is none.
  virtual bool DoGet(const GString& key, GString& value) const;
  /// `key` followed by `n` in decimal.
  [[nodiscard]] static GString Concat(const GString& key, int n);
};

}  // namespace vlm
