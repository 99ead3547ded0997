// The example contracts, through the whole command.
#include <gtest/gtest.h>

#include "tests/cli/support.hpp"

namespace {

using test::run;

std::string read(const std::string& name) {
  return test::read_file(std::string(EXAMPLES_DIR "/") + name);
}

std::string with_crlf(const std::string& text) {
  std::string out;
  for (const char c : text) {
    if (c == '\n') out += '\r';
    out += c;
  }
  return out;
}

struct Example {
  const char* name;
  std::vector<std::string> gone;
  std::vector<std::string> kept;
};

const Example EXAMPLES[] = {
    {"zh-equipment-purchase.txt",
     {"武汉楚禾食品", "澄川智能", "邓崇岳", "91420115MA4J61QX20", "13871064529", "liu.siyuan@",
      "6217001520044188308", "6228 4803 2010 4882 156", "330106198503142710", "192.168.40.10",
      "3,280,000", "2025年4月18日", "环湖中路68号"},
     {"《中华人民共和国民法典》", "第十条　知识产权与保密", "二十四小时内到达现场",
      "序号\t设备名称\t型号"}},
    {"en-services-agreement.txt",
     {"Hollinbrook Freight", "HOLLINBROOK FREIGHT", "Margaret Ollerenshaw", "27 Calverley Street",
      "37261594", "RVSDGB2LXXX", "198.51.100.24", "m.ollerenshaw@", "486,000", "3 March 2025",
      "+44 113 496 0188"},
     {"Data Protection Act 2018", "11. TERMINATION", "99.9%"}},
    {"mixed-distribution-agreement.txt",
     {"Lindenmark Medizintechnik", "上海朗沐医疗器械有限公司", "Langmu Medical Devices Co., Ltd.",
      "91310115MA1HFW3B2Y", "310104198806053022", "DE73 5006", "13917720684", "38,500.00",
      "2025年6月12日", "June 12, 2025", "qin.wangshu@"},
     {"第二条　委任 / Article 2 Appointment", "LM-Phaco 3", "0.03%"}},
};

TEST(Examples, AreMaskedAndStayReadable) {
  for (const auto& example : EXAMPLES) {
    SCOPED_TRACE(example.name);
    const auto ran = run({"anonymize"}, read(example.name));
    EXPECT_EQ(ran.code, cli::EXIT_DONE);
    EXPECT_EQ(ran.err, "");
    for (const auto& surface : example.gone) {
      EXPECT_EQ(ran.out.find(surface), std::string::npos) << surface;
    }
    for (const auto& wording : example.kept) {
      EXPECT_NE(ran.out.find(wording), std::string::npos) << wording;
    }
  }
}

TEST(Examples, LineEndsMakeNoDifference) {
  for (const auto& example : EXAMPLES) {
    SCOPED_TRACE(example.name);
    const auto text = read(example.name);
    EXPECT_EQ(run({"anonymize"}, with_crlf(text)).out, with_crlf(run({"anonymize"}, text).out));
  }
}

}  // namespace
