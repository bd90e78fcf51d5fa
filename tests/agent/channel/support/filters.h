// Filters and what they are made of.
#ifndef ZK_TESTS_AGENT_CHANNEL_SUPPORT_FILTERS_H
#define ZK_TESTS_AGENT_CHANNEL_SUPPORT_FILTERS_H

#include <string>
#include <vector>

#include "zk_quornex/idl/channel.h"

namespace zk::test {

inline CosNotifyFilter::ConstraintExpSeq constraints(const std::vector<std::string>& texts) {
  CosNotifyFilter::ConstraintExpSeq list;
  list.length(static_cast<CORBA::ULong>(texts.size()));
  for (CORBA::ULong i = 0; i < list.length(); ++i) {
    list[i].constraint_expr = CORBA::string_dup(texts[i].c_str());
  }
  return list;
}

// A constraint that asks count times for what no event has; unlike all others
// with other numbers.
inline std::string askingInVain(int count, int number) {
  std::string text = "$a == " + std::to_string(number);
  for (int i = 1; i < count; ++i) {
    text += " or $a == 1";
  }
  return text;
}

inline CosNotifyFilter::Filter_var emptyFilter(CosNotifyChannelAdmin::EventChannel_ptr channel) {
  const CosNotifyFilter::FilterFactory_var factory = channel->default_filter_factory();
  return factory->create_filter("EXTENDED_TCL");
}

// Whether the filter takes the constraint.
inline bool add(CosNotifyFilter::Filter_ptr filter, const std::string& text) {
  try {
    const CosNotifyFilter::ConstraintInfoSeq_var added =
        filter->add_constraints(constraints({text}));
    return true;
  } catch (const CORBA::SystemException&) {
    return false;
  }
}

}  // namespace zk::test

#endif
