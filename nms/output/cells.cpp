#include "nms/output/cells.h"

#include <json/writer.h>

#include "nms/wire/names.h"
#include "nms/wire/text.h"

namespace zk::nms {
namespace {

std::string pairsText(const Json::Value& cell) {
  Pairs pairs;
  for (const Json::Value& pair : cell) {
    pairs.emplace_back(pair["name"].asString(), pair["value"].asString());
  }
  return formatPairs(pairs);
}

std::string numbersText(const Json::Value& cell) {
  std::string result;
  for (const Json::Value& number : cell) {
    result += (result.empty() ? "" : " ") + number.asString();
  }
  return result;
}

}  // namespace

Json::Value textCell(const char* text) { return asUtf8(text); }

Json::Value nameCell(const globaldefs::NVSList_T& name) { return asUtf8(formatName(name)); }

Json::Value pairsCell(const globaldefs::NVSList_T& pairs) {
  Json::Value cell(Json::arrayValue);
  for (CORBA::ULong i = 0; i < pairs.length(); ++i) {
    Json::Value pair;
    pair["name"] = asUtf8(pairs[i].name.in());
    pair["value"] = asUtf8(pairs[i].value.in());
    cell.append(pair);
  }
  return cell;
}

Json::Value ratesCell(const transmissionParameters::LayerRateList_T& rates) {
  Json::Value cell(Json::arrayValue);
  for (CORBA::ULong i = 0; i < rates.length(); ++i) {
    cell.append(rates[i]);
  }
  return cell;
}

std::string jsonText(const Json::Value& value) {
  Json::StreamWriterBuilder builder;
  builder["indentation"] = "";
  builder["emitUTF8"] = true;
  return Json::writeString(builder, value);
}

std::string cellText(const Json::Value& cell) {
  if (cell.isArray()) {
    return !cell.empty() && cell[0].isObject() ? pairsText(cell) : numbersText(cell);
  }
  if (cell.isBool()) {
    return cell.asBool() ? "yes" : "no";
  }
  return cell.isObject() ? jsonText(cell) : cell.asString();
}

}  // namespace zk::nms
