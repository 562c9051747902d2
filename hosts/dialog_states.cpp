#include "dialog_states.h"

namespace ostrel {
namespace {

// As it is delivered, two-sided, all options locked, and on a model that lacks two of them.
DialogStates PrintOptions() {
  return {.id = 111,
          .title = 106,
          .lists = {{1393, {204, 201, 203}}},
          .boxes = {{1019, L"999"}},
          .states = {
              {.name = L"delivered",
               .hidden = {1414},
               .checked = {1240, 1242, 1008},
               .pictures = {{1453, 631}},
               .drawn = {{1176, 426}}},
              {.name = L"two-sided",
               .hidden = {1414},
               .checked = {1125, 1242},
               .disabled = {1394},
               .icons = {1448},
               .pictures = {{1453, 902}},
               .drawn = {{1176, 425}}},
              {.name = L"locked",
               .checked = {1241, 1243, 1008, 1422, 1496},
               .disabled = {1240, 1125, 1241, 1394, 1008, 1393},
               .icons = {1447, 1448, 1449, 1450},
               .pictures = {{1453, 1072}},
               .drawn = {{1176, 5008}}},
              {.name = L"small-model",
               .hidden = {1414, 1483, 1393, 1497, 1496},
               .checked = {1240, 1242},
               .pictures = {{1453, 1068}},
               .drawn = {{1176, 5021}}},
          }};
}

const std::vector<std::pair<int, WORD>> kPaperPictures = {{1387, 901}, {1318, 1079}, {1315, 1080}};
const std::vector<UINT> kMedia = {127, 388, 139, 4075, 334, 4076, 5099, 6541, 6542};
const std::vector<UINT> kSources = {4017, 4031, 190, 193, 194};

// As it is delivered, a paper that may enter either way, and all options locked.
DialogStates Paper() {
  return {.id = 693,
          .title = 216,
          .lists = {{1404, {116,  108,  110,  118,  123,  120,  121,  122, 119,  4063,
                            4064, 4065, 4067, 4068, 340,  4069, 111,  109, 4070, 411,
                            4072, 4073, 4074, 6001, 6002, 6003, 6004, 6005}},
                    {1009, kMedia},
                    {1393, kSources}},
          .states = {
              {.name = L"delivered",
               .checked = {1240},
               .disabled = {1240, 1125},
               .icons = {1449},
               .drawn = kPaperPictures},
              {.name = L"either-edge",
               .checked = {1125},
               .rows = {{1404, 8}, {1393, 4}},
               .drawn = kPaperPictures},
              {.name = L"locked",
               .checked = {1240},
               .disabled = {1009, 1393, 1240, 1125},
               .icons = {1446, 1450, 1449},
               .rows = {{1404, 20}, {1009, 7}, {1393, 1}},
               .drawn = kPaperPictures},
          }};
}

// The rows of all page orders in one list: the check measures each of them.
const std::vector<UINT> kPageOrders = {150, 151, 152, 153, 154, 155, 410, 412};
const std::vector<int> kPageCounts = {1387, 1389, 1390, 1391, 1392};
const std::vector<int> kScale = {1025, 1410, 1443, 1107};
const std::vector<int> kOrderAndBorder = {1046, 1047, 1393, 1409};

std::vector<int> Together(std::initializer_list<std::vector<int>> parts) {
  std::vector<int> whole;
  for (const std::vector<int>& part : parts) {
    whole.insert(whole.end(), part.begin(), part.end());
  }
  return whole;
}

// Each mode, one without booklets, and the longest rows.
DialogStates Layout() {
  return {.id = 626,
          .title = 126,
          .lists = {{1046, kPageOrders},
                    {1393, {4028, 4029}},
                    {1044, {147}},
                    {1048, {4023, 4024}},
                    {1045, {213, 212, 204}},
                    {1394, {414, 165, 415, 166, 416}}},
          .boxes = {{1025, L"100"}},
          .states = {
              {.name = L"delivered",
               .checked = {1484, 1387},
               .disabled = Together({kOrderAndBorder, {1044, 1065}}),
               .rows = {{1394, 2}},
               .drawn = {{1388, 901}, {1067, 888}}},
              {.name = L"eight-pages",
               .checked = {1484, 1391, 1415},
               .disabled = Together({kScale, {1044, 1065, 1486}}),
               .icons = {1452, 1453},
               .rows = {{1046, 1}, {1393, 1}, {1394, 3}},
               .drawn = {{1388, 901}, {1067, 786}}},
              {.name = L"sixteen-pages",
               .checked = {1484, 1392},
               .disabled = Together({kScale, {1044, 1065, 1486, 1394}}),
               .icons = {1452, 1453},
               .rows = {{1046, 3}, {1048, 1}, {1045, 1}},
               .drawn = {{1388, 901}, {1067, 771}}},
              {.name = L"poster",
               .checked = {1485},
               .disabled = Together({kPageCounts, kOrderAndBorder, kScale, {1065, 1486}}),
               .icons = {1452, 1453},
               .rows = {{1394, 2}},
               .drawn = {{1388, 901}, {1067, 1060}}},
              {.name = L"booklet",
               .checked = {1486},
               .disabled = Together({kPageCounts, kOrderAndBorder, kScale, {1044, 1485}}),
               .icons = {1452, 1454},
               .rows = {{1394, 2}},
               .drawn = {{1388, 901}, {1067, 1070}}},
              {.name = L"small-model",
               .hidden = {1486, 1065},
               .checked = {1484, 1390},
               .disabled = Together({kScale, {1044}}),
               .icons = {1452},
               .rows = {{1394, 2}},
               .drawn = {{1388, 901}, {1067, 829}}},
          }};
}

// Both units; the names that a size is given by the user are cut at the box's end.
DialogStates CustomPaper() {
  return {.id = 657,
          .title = 294,
          .modal = true,
          .boxes = {{1009, L"Wide label 24-9b"}, {1358, L"210.0"}, {1442, L"297.0"}},
          .states = {
              {.name = L"millimeters", .checked = {1110}, .disabled = {1421}},
              {.name = L"inches",
               .checked = {1111},
               .disabled = {1421, 1417},
               .texts = {{1268, 1190}, {1271, 1192}, {1274, 192}, {1275, 192}, {1009, 5005}},
               .boxes = {{1358, L"8.50"}, {1442, L"14.00"}}},
          }};
}

// Without a cover, with one, and with one whose media and source are locked.
DialogStates BookletCover() {
  const std::vector<int> coverParts = {1009, 1393, 1395, 1396, 1397, 1398, 1028, 1403};
  return {.id = 1071,
          .title = 5081,
          .modal = true,
          .lists = {{1479, {174, 177}}, {1009, {127}}, {1393, kSources}},
          .states = {
              {.name = L"no-cover", .hidden = {1064}, .disabled = coverParts},
              {.name = L"cover",
               .hidden = {1064},
               .checked = {1394, 1395, 1398},
               .rows = {{1479, 1}, {1393, 4}}},
              {.name = L"locked",
               .hidden = {1064},
               .checked = {1394, 1395, 1396, 1397, 1398},
               .disabled = {1009, 1393},
               .icons = {1446, 1450},
               .rows = {{1393, 1}}},
          }};
}

}  // namespace

std::vector<DialogStates> AllDialogs() {
  return {PrintOptions(), Paper(), Layout(), CustomPaper(), BookletCover()};
}

}  // namespace ostrel
