// The way back: mapping files, and the originals put back into a masked text.
#include "python/binding/bindings.hpp"
#include "python/binding/convert.hpp"
#include "python/binding/native_call.hpp"

#include "core/anonymization_core.hpp"
#include "core/recognition/surface_list.hpp"
#include "core/restore/mapping_file.hpp"
#include "core/restore/restore.hpp"
#include "core/restore/sealed_mapping.hpp"
#include "core/text/utf8.hpp"

namespace binding {
namespace {

namespace way_back = core::restore;

constexpr const char* OUTCOMES[] = {"restored", "by order",  "first surface",
                                    "unknown",  "ambiguous", "no brackets"};

py::list list_of_entries(const way_back::Mapping& mapping) {
  py::list out;
  for (const auto& entry : mapping.entries) {
    py::list surfaces;
    for (const auto& surface : entry.surfaces) surfaces.append(str_of(surface));
    out.append(py::make_tuple(str_of(entry.placeholder), surfaces));
  }
  return out;
}

way_back::Mapping mapping_of(const core::anonymization::AnonymizedDocument& document) {
  auto mapping = way_back::make_mapping(document);
  mapping.masked_sha256 = way_back::sha256_hex(core::text::encode_utf8(document.text));
  return mapping;
}

way_back::Mapping read(py::handle file) {
  const auto bytes = utf8_of(file, "file");
  return without_gil([&] { return way_back::read_mapping(bytes); });
}

py::str seal(py::handle file, py::handle passphrase) {
  const auto bytes = utf8_of(file, "file");
  const auto secret = utf8_of(passphrase, "passphrase");
  return str_of(without_gil([&] { return way_back::seal_mapping(bytes, secret); }));
}

py::str open(py::handle file, py::handle passphrase) {
  const auto bytes = utf8_of(file, "file");
  const auto secret = utf8_of(passphrase, "passphrase");
  return str_of(without_gil([&] { return way_back::open_sealed_mapping(bytes, secret); }));
}

py::str restore(py::handle text, const way_back::Mapping& mapping) {
  const auto edited = text_of(text);
  return str_of(without_gil([&] {
    return way_back::restored_text(edited, mapping, way_back::find_restorable(edited, mapping));
  }));
}

py::list find(py::handle text, const way_back::Mapping& mapping) {
  const auto edited = text_of(text);
  const auto findings = without_gil([&] { return way_back::find_restorable(edited, mapping); });
  py::list out;
  for (const auto& f : findings) {
    py::object surface = py::none();
    if (way_back::is_restored(f.outcome)) {
      surface = str_of(mapping.entries[f.entry].surfaces[f.surface]);
    }
    out.append(
        py::make_tuple(f.start, f.end, OUTCOMES[static_cast<std::size_t>(f.outcome)], surface));
  }
  return out;
}

py::list find_listed(py::handle text, py::handle list) {
  const auto document = text_of(text);
  const auto lines = text_of(list, "surfaces");
  const auto found =
      without_gil([&] { return core::recognition::SurfaceList(lines, "surfaces").find(document); });
  py::list out;
  for (const auto& [start, end] : found.stretches) out.append(py::make_tuple(start, end));
  return out;
}

}  // namespace

void bind_restore(py::module_& m) {
  py::class_<way_back::Mapping>(m, "PlaceholderMapping",
                                "What the placeholders of a masked text stand for.")
      .def_property_readonly(
          "language", [](const way_back::Mapping& mapping) { return str_of(mapping.language); },
          "'en' or 'zh'.")
      .def_property_readonly("entries", list_of_entries,
                             "(placeholder, surfaces) in the order of the text.");
  define(m, "make_mapping", mapping_of, "The mapping of what anonymize_document made.",
         py::arg("document"));
  define(m, "write_mapping", way_back::write_mapping,
         "The mapping as a file of JSON. It holds the originals: keep it apart.",
         py::arg("mapping"));
  define(m, "read_mapping", read,
         "The mapping that a file holds. Raises ValueError for what is no such file, and for a\n"
         "sealed one.",
         py::arg("file"));
  define(m, "seal_mapping", seal, "A mapping file that only the passphrase opens.", py::arg("file"),
         py::arg("passphrase"));
  define(m, "open_sealed_mapping", open,
         "The mapping file that was sealed. Raises ValueError for a wrong passphrase.",
         py::arg("file"), py::arg("passphrase"));
  define(m, "restore", restore,
         "A masked text, edited or not, with the originals. Placeholders that the mapping does\n"
         "not know stay.",
         py::arg("text"), py::arg("mapping"));
  define(m, "find_restorable", find,
         "(start, end, outcome, surface) of each placeholder in a masked text; the outcome is\n"
         "'restored', 'by order' or 'first surface', or, where it is left and the surface is\n"
         "None, 'unknown', 'ambiguous' or 'no brackets'.",
         py::arg("text"), py::arg("mapping"));
  define(m, "find_listed", find_listed,
         "(start, end) of what a list of surfaces and /patterns/, one a line, means in a text:\n"
         "for `keep` and `mask` of anonymize_document.",
         py::arg("text"), py::arg("surfaces"));
}

}  // namespace binding
