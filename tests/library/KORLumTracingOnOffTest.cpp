// Tracing only shows what the operations do: with tracing off every
// operation of the session-file values and their lists gives the same
// results as with tracing on.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "FreshProcess.h"
#include "KORHUBTrace.h"
#include "KORListLumSessionFile.h"
#include "KORListLumSessionFileDef.h"
#include "KORListLumViewerBag.h"
#include "KORListLumViewerDef.h"
#include "KORLumSessionFile.h"
#include "KORLumSessionFileDef.h"
#include "KORLumViewerBag.h"
#include "KORLumViewerDef.h"
#include "ListText.h"
#include "StringList.h"
#include "TraceCapture.h"

// Checks what happens on first use: each test case needs a process of its own.
VX0SESS0_TEST_CASES_NEED_A_FRESH_PROCESS();

namespace {

std::string Text(const KORUnicodeString& iText) { return iText.ConvertToChar(); }

// A representative use of every value class and list; each result is
// recorded as "what=result".
std::vector<std::string> RunScenario() {
  std::vector<std::string> results;
  const auto record = [&results](const char* iWhat, const std::string& iResult) {
    results.push_back(std::string(iWhat) + "=" + iResult);
  };
  const auto recordInt = [&record](const char* iWhat, long iResult) {
    record(iWhat, std::to_string(iResult));
  };

  // Viewer definitions.
  const KORLumViewerDef part("Part", "Viewer3D");
  const KORLumViewerDef half("Part", "");
  record("part", Text(part.ConvertToString()));
  recordInt("half==none", half == KORLumViewerDef::GetNoViewerDef());

  // Viewer bags.
  const KORListValKORUnicodeString names = StringList({"V1", "", "V2", "V1"});
  KORLumViewerBag bag("Part", names);
  recordInt("bag.Add(V3)", bag.Add("V3"));
  recordInt("bag.Add(V1)", bag.Add("V1"));
  recordInt("bag.Add()", bag.Add(""));
  record("bag.viewers", ListText(bag.GetViewers()));
  recordInt("bag==otherBagOfPart", bag == KORLumViewerBag("Part", KORListValKORUnicodeString()));
  recordInt("bag!=defaultBag", bag != KORLumViewerBag());

  // Session-file definitions.
  KORListValKORLumViewerBag bags;
  bags.Append(bag);
  bags.Append(KORLumViewerBag("Product", names));
  bags.Append(KORLumViewerBag("Part", KORListValKORUnicodeString()));
  const KORLumSessionFileDef fromBags(KORLumSessionFileType_Graph, "Graph", "hub", bags);
  const KORLumSessionFileDef fromNames(KORLumSessionFileType_Query, "Query", "qry", &names);
  recordInt("fromBags.bags", fromBags.GetViewerBags().Size());
  record("fromBags.bag2", Text(fromBags.GetViewerBag(2).GetObject()));
  recordInt("fromBags.bag1.viewers", fromBags.GetViewerBag(1).GetNumberOfViewers());
  record("fromNames.viewers", ListText(fromNames.GetViewers()));
  recordInt("fromBags==fromNames", fromBags == fromNames);
  recordInt("fromBags!=fromNames", fromBags != fromNames);
  KORLumSessionFileDef merged(fromBags);
  merged = KORLumSessionFileDef(KORLumSessionFileType_Query, "Merged", "mrg");
  record("merged", std::to_string(merged.GetType()) + " " + Text(merged.GetName()) + " " +
                       Text(merged.GetSuffix()) + " " +
                       std::to_string(merged.GetViewerBags().Size()));
  KORListValKORLumSessionFileDef defs;
  defs.Append(fromBags);
  defs.Append(fromNames);
  defs.Append(merged);
  recordInt("defs.Locate(merged)", defs.Locate(merged, 1));
  recordInt("defs.RemoveDuplicates", defs.RemoveDuplicates());
  recordInt("defs.Size", defs.Size());

  // Session files.
  const KORLumSessionFile graph(KORLumSessionFileType_Graph, "/data/model.hub",
                                KORUnicodeString("Viewer3D"), KORLumGraphSessionLoadMode_None,
                                KORLumGraphSessionInstanceMode_Selected, 9UL);
  const KORLumSessionFile fromDef(KORLumSessionFileType_Graph, "/data/model.hub", part,
                                  KORLumGraphSessionLoadMode_Static,
                                  KORLumGraphSessionInstanceMode_None, 0UL);
  const KORLumSessionFile none(KORLumSessionFileType_None, "/x", KORUnicodeString("V"),
                               KORLumGraphSessionLoadMode_Static,
                               KORLumGraphSessionInstanceMode_Selected, 0UL);
  record("graph", std::to_string(graph.GetType()) + " " + Text(graph.GetFile()) + " " +
                      Text(graph.GetViewer()) + " " + Text(graph.GetViewerDef().GetViewer()) + " " +
                      std::to_string(graph.GetLoadMode()) + " " +
                      std::to_string(graph.GetInstanceMode()) + " " +
                      std::to_string(graph.GetOption()));
  record("fromDef", Text(fromDef.GetViewer()) + "|" +
                        Text(fromDef.GetViewerDef().ConvertToString()) + "|" +
                        std::to_string(fromDef.GetLoadMode()) + " " +
                        std::to_string(fromDef.GetInstanceMode()));
  recordInt("none==noSessionFile", none == KORLumSessionFile::GetNoSessionFile());
  recordInt("graph!=fromDef", graph != fromDef);
  KORLumSessionFile assigned;
  assigned = graph;
  const KORLumSessionFile copied(assigned);
  recordInt("copied==graph", copied == graph);

  // Lists of session files and of viewer definitions.
  KORListValKORLumSessionFile files;
  files.Append(graph);
  files.Append(fromDef);
  files.Append(copied);
  recordInt("files.RemoveDuplicates", files.RemoveDuplicates());
  recordInt("files.Locate(fromDef)", files.Locate(fromDef, 1));
  KORListValKORLumViewerDef viewerDefs;
  viewerDefs.Append(part);
  viewerDefs.InsertAt(1, half);
  viewerDefs.Size(4, &part);
  recordInt("viewerDefs.RemoveValue(part)", viewerDefs.RemoveValue(part));
  recordInt("viewerDefs.Size", viewerDefs.Size());
  const KORListValKORLumViewerDef copiedDefs(viewerDefs);
  recordInt("copiedDefs==viewerDefs", copiedDefs == viewerDefs);
  return results;
}

const std::vector<std::string> kExpectedResults = {"part=Part.Viewer3D",
                                                   "half==none=1",
                                                   "bag.Add(V3)=0",
                                                   "bag.Add(V1)=1",
                                                   "bag.Add()=-1",
                                                   "bag.viewers=[V1] [] [V2] [V1] [V3]",
                                                   "bag==otherBagOfPart=1",
                                                   "bag!=defaultBag=1",
                                                   "fromBags.bags=2",
                                                   "fromBags.bag2=Product",
                                                   "fromBags.bag1.viewers=5",
                                                   "fromNames.viewers=[V1] [V2]",
                                                   "fromBags==fromNames=0",
                                                   "fromBags!=fromNames=1",
                                                   "merged=2 Merged mrg 2",
                                                   "defs.Locate(merged)=2",
                                                   "defs.RemoveDuplicates=1",
                                                   "defs.Size=2",
                                                   "graph=1 /data/model.hub Viewer3D  1 2 9",
                                                   "fromDef=|Part.Viewer3D|2 1",
                                                   "none==noSessionFile=1",
                                                   "graph!=fromDef=1",
                                                   "copied==graph=1",
                                                   "files.RemoveDuplicates=1",
                                                   "files.Locate(fromDef)=2",
                                                   "viewerDefs.RemoveValue(part)=2",
                                                   "viewerDefs.Size=3",
                                                   "copiedDefs==viewerDefs=1"};

class KORLumTracingOnOff : public ::testing::TestWithParam<bool> {};

}  // namespace

TEST_P(KORLumTracingOnOff, ResultsAreTheSameWhetherTracingIsOnOrOff) {
  TraceCapture capture;
  KORHUBTrace::SetActive(GetParam() ? 1 : 0);
  EXPECT_EQ(RunScenario(), kExpectedResults);
  // The scenario did run under the intended setting.
  EXPECT_EQ(capture.Text().empty(), !GetParam());
}

INSTANTIATE_TEST_SUITE_P(Tracing, KORLumTracingOnOff, ::testing::Values(false, true),
                         [](const ::testing::TestParamInfo<bool>& iInfo) {
                           return std::string(iInfo.param ? "On" : "Off");
                         });
