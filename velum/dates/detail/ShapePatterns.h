#pragma once

/// \file
/// The patterns by which texts are told apart. The first that stands in a text's shape gives the
/// type; one of type 0 ends the search like any other.
///
///     detail::kDatePatterns[0].pattern;  // "nnnn/nn/n"

#include <array>
#include <string_view>

namespace vlm::detail {

/// A piece of a shape and the type that it stands for. A plain value.
struct ShapePattern {
  unsigned char type;
  std::string_view pattern;
};

/// The date types' patterns, in the order in which they count.
inline constexpr auto kDatePatterns = std::to_array<ShapePattern>({
    {12, "nnnn/nn/n"},
    {12, "nnnn/n/n"},
    {12, "nnnn-nn-n"},
    {12, "nnnn-n-n"},
    {13, "nnnn-xxx-n"},
    {13, "nnnn-xxxx-n"},
    {13, "nnnn-xxxxx-n"},
    {13, "nnnn-xxxxxx-n"},
    {13, "nnnn-xxxxxxx-n"},
    {13, "nnnn-xxxxxxxx-n"},
    {13, "nnnn-xxxxxxxxx-n"},
    {13, "nnnn/xxx/n"},
    {13, "nnnn/xxxx/n"},
    {13, "nnnn/xxxxx/n"},
    {13, "nnnn/xxxxxx/n"},
    {13, "nnnn/xxxxxxx/n"},
    {13, "nnnn/xxxxxxxx/n"},
    {13, "nnnn/xxxxxxxxx/n"},
    {12, "n/nn/nnn"},
    {12, "n/n/nnn"},
    {2, "n/nn/n"},
    {2, "n/n/n"},
    {1, "n/n"},
    {12, "n-nn-nnn"},
    {12, "n-n-nnn"},
    {2, "n-nn-n"},
    {2, "n-n-n"},
    {0, "n-n"},
    {13, "n-xxx-nnn"},
    {13, "n-xxxx-nnn"},
    {13, "n-xxxxx-nnn"},
    {13, "n-xxxxxx-nnn"},
    {13, "n-xxxxxxx-nnn"},
    {13, "n-xxxxxxxx-nnn"},
    {13, "n-xxxxxxxxx-nnn"},
    {13, "n/xxx/nnn"},
    {13, "n/xxxx/nnn"},
    {13, "n/xxxxx/nnn"},
    {13, "n/xxxxxx/nnn"},
    {13, "n/xxxxxxx/nnn"},
    {13, "n/xxxxxxxx/nnn"},
    {13, "n/xxxxxxxxx/nnn"},
    {5, "n-xxx-n"},
    {5, "n-xxxx-n"},
    {5, "n-xxxxx-n"},
    {5, "n-xxxxxx-n"},
    {5, "n-xxxxxxx-n"},
    {5, "n-xxxxxxxx-n"},
    {5, "n-xxxxxxxxx-n"},
    {5, "n/xxx/n"},
    {5, "n/xxxx/n"},
    {5, "n/xxxxx/n"},
    {5, "n/xxxxxx/n"},
    {5, "n/xxxxxxx/n"},
    {5, "n/xxxxxxxx/n"},
    {5, "n/xxxxxxxxx/n"},
    {4, "xxx-n"},
    {4, "n-xxx"},
    {4, "xxx/n"},
    {4, "n/xxx"},
    {9, "xxx nn, n"},
    {9, "xxx n, n"},
    {9, "xxx nn,n"},
    {9, "xxx n,n"},
    {7, "xxx nnn"},
    {7, "xxx n"},
});

/// The time types' patterns, in the order in which they count.
inline constexpr auto kTimePatterns = std::to_array<ShapePattern>({
    {4, "nn:nn:nn x"}, {4, "nn:nn:n x"},  {4, "nn:n:nn x"}, {4, "nn:n:n x"},  {4, "n:nn:nn x"},
    {4, "n:nn:n x"},   {4, "n:n:nn x"},   {4, "n:n:n x"},   {2, "nn:n x"},    {2, "n:nn x"},
    {2, "n:n x"},      {0, "nn:nn.nn x"}, {0, "nn:nn.n x"}, {0, "nn:n.nn x"}, {0, "nn:n.n x"},
    {0, "n:nn.nn x"},  {0, "n:nn.n x"},   {0, "n:n.nn x"},  {0, "n:n.n x"},   {0, "nn.nn.nn x"},
    {0, "nn.nn.n x"},  {0, "nn.n.nn x"},  {0, "nn.n.n x"},  {0, "n.nn.nn x"}, {0, "n.nn.n x"},
    {0, "n.n.nn x"},   {0, "n.n.n x"},    {0, "n.n x"},     {2, "n x"},       {4, "nn:nn:nnx"},
    {4, "nn:nn:nx"},   {4, "nn:n:nnx"},   {4, "nn:n:nx"},   {4, "n:nn:nnx"},  {4, "n:nn:nx"},
    {4, "n:n:nnx"},    {4, "n:n:nx"},     {2, "nn:nnx"},    {2, "nn:nx"},     {2, "n:nnx"},
    {2, "n:nx"},       {0, "nn:nn.nnx"},  {0, "nn:nn.nx"},  {0, "nn:n.nnx"},  {0, "nn:n.nx"},
    {0, "n:nn.nnx"},   {0, "n:nn.nx"},    {0, "n:n.nnx"},   {0, "n:n.nx"},    {0, "nn.nn.nnx"},
    {0, "nn.nn.nx"},   {0, "nn.n.nnx"},   {0, "nn.n.nx"},   {0, "n.nn.nnx"},  {0, "n.nn.nx"},
    {0, "n.n.nnx"},    {0, "n.n.nx"},     {0, "n.nx"},      {2, "nxx"},       {0, "nx"},
    {3, "n:nn:n"},     {3, "n:n:n"},      {0, "n:nn.n"},    {0, "n:n.n"},     {0, "n.nn.n"},
    {0, "n.n.n"},      {0, "n.n"},        {1, "n:n"},
});

}  // namespace vlm::detail
