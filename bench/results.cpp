// SPDX-License-Identifier: MIT
//
// The layout of the results document.

#include "results.h"

#include <ko/Orvid.h>

#include <fstream>
#include <stdexcept>

#include "provenance.h"

namespace orvid_bench {

namespace {

using ko::Orvid::Element;

Element object() {
    Element result;
    ko::Orvid::DomParser().parse(result, "{}");
    return result;
}

void addBar(Element& list, const std::string& group, const BarResult& bar) {
    Element record = object();
    record.create("group", group);
    record.create("what", bar.what);
    record.create("measured", bar.measured);
    record.create("limit", bar.limit);
    record.create("met", bar.isMet());
    list.create("bars[*]", record);
}

void addQuantiles(Element& record, const std::string& key, const Quantiles& quantiles) {
    record.create(key + ".p10", quantiles.p10);
    record.create(key + ".median", quantiles.median);
    record.create(key + ".p90", quantiles.p90);
}

Element recordOf(const SubjectResult& subject) {
    Element record = object();
    record.create("subject", subject.subject);
    addQuantiles(record, "seconds", subject.seconds);
    addQuantiles(record, "ratio", subject.ratio);
    record.create("allocations", subject.allocations);
    return record;
}

}  // namespace

Results::Results() : m_root(object()) {
    Element record = object();
    for (const auto& [name, text] : provenance()) {
        record.insert(name, text);
    }
    m_root.create("provenance", record);
}

void Results::add(const GroupResult& group) {
    Element record = object();
    record.create("job", group.job);
    record.create("document", group.document);
    record.create("rounds", group.rounds);
    for (const SubjectResult& subject : group.subjects) {
        record.create("subjects[*]", recordOf(subject));
    }
    m_root.create("groups[*]", record);
    for (const BarResult& bar : group.bars) {
        addBar(m_root, group.job + ", " + group.document, bar);
    }
}

void Results::add(const GrowthResult& growth) {
    const std::string law = growth.law == Law::linear ? "n" : "n log n";
    Element record = object();
    record.create("job", growth.job);
    record.create("law", law);
    for (const auto& point : growth.points) {
        Element item = object();
        item.create("n", static_cast<unsigned long>(point.size));
        item.create("seconds", point.seconds);
        item.create("nanosecondsPerUnit", point.nanosecondsPerUnit);
        record.create("points[*]", item);
    }
    m_root.create("growth[*]", record);
    addBar(m_root, "growth, " + growth.job,
           {"worst rise against " + law + " at ten times the size", growth.worstStep(),
            GrowthResult::k_limit});
}

void Results::add(const MemoryResult& memory) {
    Element record = object();
    record.create("document", memory.document);
    record.create("subject", memory.subject);
    record.create("values", static_cast<unsigned long>(memory.values));
    record.create("peakBytes", memory.peakBytes);
    record.create("bytesPerValue", memory.bytesPerValue);
    record.create("faults", memory.faults);
    m_root.create("memory[*]", record);
    for (const BarResult& bar : memory.bars()) {
        addBar(m_root, "memory, " + memory.document, bar);
    }
}

void Results::write(const std::string& file) const {
    std::ofstream out(file, std::ios::binary);
    out << m_root;
    if (!out.flush()) {
        throw std::runtime_error("cannot write " + file);
    }
}

}  // namespace orvid_bench
