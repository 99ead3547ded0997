// The networks of a model as they lie in its files `model`: nodes with names,
// numbers and arrays.
//
// Everything in it refers to the mapped file, which outlives it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/nlp/spacy/mapped_file.hpp"
#include "core/nlp/spacy/msgpack.hpp"

namespace core::nlp::spacy {

// An array of little-endian 32-bit floats, the last index fastest. The bytes are
// not aligned.
struct FloatArray {
  std::vector<std::size_t> shape;
  std::string_view bytes;

  std::size_t size() const { return bytes.size() / sizeof(float); }
  float at(std::size_t i) const;
  // A copy of all.
  std::vector<float> values() const;
};

class Node {
 public:
  std::size_t index = 0;
  std::string_view name;
  std::map<std::string_view, std::size_t> refs;
  std::map<std::string_view, std::string_view> attrs;  // msgpack
  std::map<std::string_view, FloatArray> params;
  std::string file;

  // The array of this name and number of dimensions, all its values finite. Throws ModelError.
  const FloatArray& array(std::string_view param, std::size_t dimensions) const;
  // A reader of the attribute; throws ModelError if there is none.
  MsgpackReader attr(std::string_view attr) const;
  // Throws ModelError, naming the node.
  [[noreturn]] void fail(std::string_view reason) const;
  // Throws ModelError unless the array has this shape.
  void expect_shape(std::string_view param, const std::vector<std::size_t>& shape) const;
};

class NetworkFile {
 public:
  // Throws ModelError for a file that is damaged and for kinds of nodes that are
  // not supported.
  explicit NetworkFile(const MappedFile& file);

  // All nodes of a name, in their order.
  std::vector<const Node*> nodes(std::string_view name) const;
  // The only one of its name, or nullptr; throws ModelError if there are more.
  const Node* only(std::string_view name) const;
  const Node& root() const { return nodes_.front(); }
  // The node to which `node` refers under `ref`. Throws ModelError if there is none.
  const Node& referred(const Node& node, std::string_view ref) const;
  const std::vector<Node>& all() const { return nodes_; }

 private:
  void read_nodes(MsgpackReader& reader);
  void read_attrs(MsgpackReader& reader);
  void read_params(MsgpackReader& reader);
  void read_shims(MsgpackReader& reader);
  std::size_t counted(MsgpackReader& reader);

  std::vector<Node> nodes_;
};

}  // namespace core::nlp::spacy
