#include "tests/desktop/harness/Holdings.h"

#include "tests/desktop/harness/HarnessError.h"
#include "tests/desktop/harness/Sandbox.h"
#include "tests/desktop/harness/WindowFacts.h"

#include <xcb/res.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <ostream>
#include <sstream>
#include <vector>

namespace mirrolet::harness {

namespace {

long entriesIn(const std::filesystem::path& folder) {
    std::error_code gone;
    const std::filesystem::directory_iterator entries(folder, gone);
    return gone ? 0 : static_cast<long>(std::distance(begin(entries), end(entries)));
}

long residentKibOf(const std::filesystem::path& folder) {
    std::istringstream status(Sandbox::read(folder / "status"));
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmRSS:"))
            return std::stol(line.substr(6));
    throw HarnessError("the process is gone");
}

std::vector<std::uint32_t> connectionsOf(XClient& client, pid_t process) {
    auto* xcb = client.xcb();
    std::vector<std::uint32_t> found;
    const Reply<xcb_res_query_clients_reply_t> reply(
        xcb_res_query_clients_reply(xcb, xcb_res_query_clients(xcb), nullptr));
    if (!reply)
        throw HarnessError("the X server has no X-Resource extension");
    for (auto at = xcb_res_query_clients_clients_iterator(reply.get()); at.rem > 0; xcb_res_client_next(&at))
        if (WindowFacts(client).process(at.data->resource_base) == process)
            found.push_back(at.data->resource_base);
    return found;
}

long pixmapBytesOf(xcb_connection_t* xcb, std::uint32_t xid) {
    const Reply<xcb_res_query_client_pixmap_bytes_reply_t> bytes(
        xcb_res_query_client_pixmap_bytes_reply(xcb, xcb_res_query_client_pixmap_bytes(xcb, xid), nullptr));
    return bytes ? static_cast<long>(bytes->bytes) : 0;
}

} // namespace

Holdings Holdings::of(XClient& client, pid_t process) {
    const auto folder = std::filesystem::path("/proc") / std::to_string(process);
    Holdings holdings;
    holdings.residentKib = residentKibOf(folder);
    holdings.counts["descriptors"] = entriesIn(folder / "fd");
    holdings.counts["threads"] = entriesIn(folder / "task");
    for (const auto xid : connectionsOf(client, process)) {
        ++holdings.counts["connections"];
        holdings.pixmapBytes += pixmapBytesOf(client.xcb(), xid);
        for (const auto& [kind, count] : resourcesOf(client, xid))
            holdings.counts[kind] += count;
    }
    return holdings;
}

std::map<std::string, long> resourcesOf(XClient& client, std::uint32_t resource) {
    auto* xcb = client.xcb();
    const Reply<xcb_res_query_client_resources_reply_t> kinds(
        xcb_res_query_client_resources_reply(xcb, xcb_res_query_client_resources(xcb, resource), nullptr));
    std::map<std::string, long> counts;
    if (!kinds)
        return counts;
    const auto* kind = xcb_res_query_client_resources_types(kinds.get());
    for (int i = 0; i < xcb_res_query_client_resources_types_length(kinds.get()); ++i)
        counts[client.nameOf(kind[i].resource_type)] += kind[i].count;
    return counts;
}

bool Holdings::noMoreThan(const Holdings& before) const {
    return pixmapBytes <= before.pixmapBytes && std::ranges::all_of(counts, [&](const auto& entry) {
               const auto known = before.counts.find(entry.first);
               return known != before.counts.end() && entry.second <= known->second;
           });
}

std::ostream& operator<<(std::ostream& stream, const Holdings& holdings) {
    stream << holdings.residentKib << " KiB resident, " << holdings.pixmapBytes << " bytes of pixmaps";
    for (const auto& [kind, count] : holdings.counts)
        stream << ", " << kind << ' ' << count;
    return stream;
}

} // namespace mirrolet::harness
