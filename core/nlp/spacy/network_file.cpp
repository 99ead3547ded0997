#include "core/nlp/spacy/network_file.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

#include "core/nlp/spacy/model_error.hpp"

namespace core::nlp::spacy {
namespace {

static_assert(std::endian::native == std::endian::little, "models are read where they lie");

constexpr std::string_view KNOWN_KINDS[] = {
    "parser_model", "extract_features", "hashembed",   "static_vectors",       "maxout",
    "layernorm",    "expand_window",    "linear",      "precomputable_affine", "tok2vec-listener",
    "dropout",      "list2array",       "list2ragged", "ragged2list",          "ints-getitem"};

// Names of nodes that are made of others hold the names of these, and say nothing new.
bool is_composed(std::string_view name) {
  return name.starts_with("with_array(") || name.starts_with("residual(") ||
         name.find(">>") != name.npos || name.find('|') != name.npos;
}

std::string described(const std::vector<std::size_t>& shape) {
  std::string out = "[";
  for (const auto size : shape) out += (out.size() > 1 ? ", " : "") + std::to_string(size);
  return out + "]";
}

// The number of floats; throws if the product is more than the bytes hold.
void check_size(const FloatArray& array, const MsgpackReader& reader) {
  std::size_t count = 1;
  for (const auto size : array.shape) {
    if (size != 0 && count > array.bytes.size() / size) reader.fail("data shorter than its shape");
    count *= size;
  }
  if (count * sizeof(float) != array.bytes.size()) reader.fail("data do not fit their shape");
}

FloatArray read_array(MsgpackReader& reader) {
  constexpr std::size_t MOST_DIMENSIONS = 8;
  FloatArray out;
  std::string_view type;
  for (auto left = reader.read_map(); left > 0; --left) {
    const auto key = reader.read_bytes();
    if (key == "type") {
      type = reader.read_bytes();
    } else if (key == "data") {
      out.bytes = reader.read_bytes();
    } else if (key == "shape") {
      const auto dimensions = reader.read_array();
      if (dimensions > MOST_DIMENSIONS) reader.fail("too many dimensions");
      for (std::size_t i = 0; i < dimensions; ++i) {
        out.shape.push_back(static_cast<std::size_t>(reader.read_unsigned()));
      }
    } else {
      reader.skip();
    }
  }
  if (type != "<f4") reader.fail("an array is not of 32-bit floats");
  check_size(out, reader);
  return out;
}

void read_references(MsgpackReader& reader, std::map<std::string_view, std::size_t>& out) {
  for (auto left = reader.read_map(); left > 0; --left) {
    const auto key = reader.read_bytes();
    if (!reader.take_nil()) out[key] = static_cast<std::size_t>(reader.read_unsigned());
  }
}

}  // namespace

float FloatArray::at(std::size_t i) const {
  float value = 0;
  std::memcpy(&value, bytes.data() + i * sizeof value, sizeof value);
  return value;
}

std::vector<float> FloatArray::values() const {
  std::vector<float> out(size());
  if (!out.empty()) std::memcpy(out.data(), bytes.data(), bytes.size());
  return out;
}

void Node::fail(std::string_view reason) const {
  throw ModelError(file, "node " + std::to_string(index) + " (" + std::string(name) + ")", reason);
}

const FloatArray& Node::array(std::string_view param, std::size_t dimensions) const {
  const auto found = params.find(param);
  if (found == params.end()) fail(std::string(param) + " is missing");
  const auto& array = found->second;
  if (array.shape.size() != dimensions || array.bytes.empty()) {
    fail(std::string(param) + " has the shape " + described(array.shape));
  }
  for (std::size_t i = 0; i < array.size(); ++i) {
    if (!std::isfinite(array.at(i))) fail(std::string(param) + " holds a value that is no number");
  }
  return array;
}

MsgpackReader Node::attr(std::string_view attr) const {
  const auto found = attrs.find(attr);
  if (found == attrs.end()) fail("the attribute " + std::string(attr) + " is missing");
  return {found->second, file, "node " + std::to_string(index) + ", " + std::string(attr)};
}

void Node::expect_shape(std::string_view param, const std::vector<std::size_t>& shape) const {
  const auto& actual = array(param, shape.size()).shape;
  if (actual == shape) return;
  fail(std::string(param) + " has the shape " + described(actual) + " instead of " +
       described(shape));
}

NetworkFile::NetworkFile(const MappedFile& file) {
  MsgpackReader reader(file.bytes(), file.name());
  for (auto left = reader.read_map(); left > 0; --left) {
    const std::string key(reader.read_bytes());
    reader.set_place(key);
    if (key == "nodes") {
      read_nodes(reader);
    } else if (key == "attrs") {
      read_attrs(reader);
    } else if (key == "params") {
      read_params(reader);
    } else if (key == "shims") {
      read_shims(reader);
    } else {
      reader.fail("not a part of a model");
    }
  }
  reader.expect_end();
  if (nodes_.empty()) reader.fail("there are no nodes");
}

// The four parts of the file are as long as each other.
std::size_t NetworkFile::counted(MsgpackReader& reader) {
  const auto count = reader.read_array();
  if (count != nodes_.size()) reader.fail("not one for each node");
  return count;
}

void NetworkFile::read_nodes(MsgpackReader& reader) {
  if (!nodes_.empty()) reader.fail("nodes are given twice");
  const auto count = reader.read_array();
  for (std::size_t i = 0; i < count; ++i) {
    auto& node = nodes_.emplace_back();
    node.index = i;
    node.file = reader.file();
    for (auto left = reader.read_map(); left > 0; --left) {
      const auto key = reader.read_bytes();
      if (key == "name") {
        node.name = reader.read_bytes();
      } else if (key == "refs") {
        read_references(reader, node.refs);
      } else {
        reader.skip();  // sizes are those of the arrays
      }
    }
    const bool known = std::find(std::begin(KNOWN_KINDS), std::end(KNOWN_KINDS), node.name) !=
                       std::end(KNOWN_KINDS);
    if (!known && !is_composed(node.name)) node.fail("a layer of this kind is not supported");
  }
}

void NetworkFile::read_attrs(MsgpackReader& reader) {
  const auto count = counted(reader);
  for (std::size_t i = 0; i < count; ++i) {
    for (auto left = reader.read_map(); left > 0; --left) {
      const auto key = reader.read_bytes();
      nodes_[i].attrs[key] = reader.read_bytes();
    }
  }
}

void NetworkFile::read_params(MsgpackReader& reader) {
  const auto count = counted(reader);
  for (std::size_t i = 0; i < count; ++i) {
    reader.set_place("params of node " + std::to_string(i) + " (" + std::string(nodes_[i].name) +
                     ")");
    for (auto left = reader.read_map(); left > 0; --left) {
      const auto key = reader.read_bytes();
      if (!reader.take_nil()) nodes_[i].params[key] = read_array(reader);
    }
  }
}

void NetworkFile::read_shims(MsgpackReader& reader) {
  const auto count = counted(reader);
  for (std::size_t i = 0; i < count; ++i) {
    if (reader.read_array() != 0) nodes_[i].fail("a layer of another library is not supported");
  }
}

std::vector<const Node*> NetworkFile::nodes(std::string_view name) const {
  std::vector<const Node*> out;
  for (const auto& node : nodes_) {
    if (node.name == name) out.push_back(&node);
  }
  return out;
}

const Node* NetworkFile::only(std::string_view name) const {
  const auto found = nodes(name);
  if (found.size() > 1) found[1]->fail("there is one of its kind already");
  return found.empty() ? nullptr : found.front();
}

const Node& NetworkFile::referred(const Node& node, std::string_view ref) const {
  const auto found = node.refs.find(ref);
  if (found == node.refs.end() || found->second >= nodes_.size()) {
    node.fail("refers to no node as " + std::string(ref));
  }
  return nodes_[found->second];
}

}  // namespace core::nlp::spacy
