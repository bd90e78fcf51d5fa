// The values of a row, from what the records hold.
#ifndef ZK_NMS_OUTPUT_CELLS_H
#define ZK_NMS_OUTPUT_CELLS_H

#include <json/value.h>

#include "zk_quornex/idl/managers.h"
#include "zk_quornex/idl/names.h"

namespace zk::nms {

Json::Value textCell(const char* text);
Json::Value nameCell(const globaldefs::NVSList_T& name);
Json::Value pairsCell(const globaldefs::NVSList_T& pairs);
Json::Value ratesCell(const transmissionParameters::LayerRateList_T& rates);

// On one line.
std::string jsonText(const Json::Value& value);

// What a table and a CSV file show for a cell: lists of numbers with blanks
// between them, pairs as in a typed name, yes and no, anything deeper as JSON.
std::string cellText(const Json::Value& cell);

}  // namespace zk::nms

#endif
