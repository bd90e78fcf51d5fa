#include "agent/ems/seed.h"

#include <algorithm>
#include <array>
#include <map>

#include "agent/ems/objects.h"

namespace zk::agent {

namespace {

constexpr char OWNER[] = "Veltra";
constexpr char NETWORK_SUBMAP_ID[] = "1";

struct Product {
  const char* name;
  const char* shortName;
  const char* version;
  LinkRate rate;  // of the links between two of them
};

constexpr std::array<Product, 4> PRODUCTS{
    {{"Quor QA-8 Access Multiplexer", "QA8", "3.1.4", LinkRate::STM_1},
     {"Quor QM-32 Metro Multiplexer", "QM32", "5.0.2", LinkRate::STM_4},
     {"Quor QC-96 Cross-Connect", "QC96", "5.2.0", LinkRate::STM_16},
     {"Quor QW-40 Wavelength Terminal", "QW40", "2.7.1", LinkRate::WAVELENGTH}}};

constexpr std::array<const char*, 12> SITES{
    {"Aldermoor", "Brackenhill", "Corvendale", "Dunmarrow", "Elmsreach", "Fenwater", "Grayhollow",
     "Hartsmere", "Islebridge", "Juniperfield", "Kestrelby", "Larkminster"}};

std::string siteName(int site) {
  const int known = static_cast<int>(SITES.size());
  const std::string name = SITES[static_cast<std::size_t>(site % known)];
  return site < known ? name : name + std::to_string(1 + site / known);
}

std::string twoDigits(int number) { return (number < 10 ? "0" : "") + std::to_string(number); }

// Fills in the labels that every seeded object starts with.
template <class Record>
void label(Record& record, const std::string& name) {
  record.nativeName = name;
  record.userLabel = name;
  record.owner = OWNER;
}

class Seeder {
 public:
  Seeder(Tables& tables, const SeedOptions& options)
      : tables_(tables), devices_(options.devices), sites_(options.sites) {}

  void run() {
    addTop();
    for (int site = 0; site < sites_; ++site) {
      addSiteMap(site);
    }
    for (int site = 0; site < sites_; ++site) {
      addDevices(site);
    }
    for (int site = 0; site < sites_; ++site) {
      addRing(site);
    }
    for (int site = 0; site < sites_; ++site) {
      addTrunks(site);
    }
    storeCounters();
  }

 private:
  void addTop();
  void addSiteMap(int site);
  void addDevices(int site);
  void addDevice(int site, int place);
  void addRing(int site);
  void addTrunks(int site);
  void addLink(long aDevice, long zDevice, const std::string& submap, const std::string& aDrawn,
               const std::string& zDrawn);
  void addSubMap(const std::string& id, const std::string& parentId, const std::string& name);
  void storeCounters();

  // Sites follow the network's own submap, and nodes the sites.
  std::string siteId(int site) const { return std::to_string(2 + site); }
  std::string nodeId(long device) const { return std::to_string(1 + sites_ + device); }

  // Devices are dealt evenly: the first sites get one more when it does not come
  // out even.
  int devicesAt(int site) const { return devices_ / sites_ + (site < devices_ % sites_ ? 1 : 0); }
  long deviceAt(int site, int place) const {
    return 1 + static_cast<long>(site) * (devices_ / sites_) + std::min(site, devices_ % sites_) +
           place;
  }
  const Product& productOf(long device) const {
    return PRODUCTS[static_cast<std::size_t>(device % static_cast<long>(PRODUCTS.size()))];
  }
  std::string nextPort(long device);

  Tables& tables_;
  const int devices_;
  const int sites_;
  long links_ = 0;
  std::map<long, int> portsTaken_;  // of each device
};

void Seeder::addTop() {
  EmsRecord ems;
  ems.userLabel = "Quor";
  ems.owner = OWNER;
  tables_.insert(ems);
  SubnetworkRecord subnetwork;
  subnetwork.id = SUBNETWORK_ID;
  subnetwork.topology = Topology::MESH;
  label(subnetwork, "Transport network");
  tables_.insert(subnetwork);
  addSubMap(ROOT_SUBMAP_ID, "", "Physical view");
  addSubMap(NETWORK_SUBMAP_ID, ROOT_SUBMAP_ID, "Transport network");
}

void Seeder::addSubMap(const std::string& id, const std::string& parentId,
                       const std::string& name) {
  SubMapRecord subMap;
  subMap.id = id;
  subMap.parentId = parentId;
  label(subMap, name);
  tables_.insert(subMap);
}

void Seeder::addSiteMap(int site) { addSubMap(siteId(site), NETWORK_SUBMAP_ID, siteName(site)); }

void Seeder::addDevices(int site) {
  for (int place = 0; place < devicesAt(site); ++place) {
    addDevice(site, place);
  }
}

void Seeder::addDevice(int site, int place) {
  DeviceRecord device;
  device.id = deviceAt(site, place);
  const Product& product = productOf(device.id);
  device.name = siteName(site) + "-" + product.shortName + "-" + twoDigits(place + 1);
  device.productName = product.name;
  device.userLabel = device.name;
  device.owner = OWNER;
  device.version = product.version;
  device.location = siteName(site) + ", room " + std::to_string(1 + place / 8) + ", row " +
                    std::to_string(1 + place % 8);
  device.siteId = siteId(site);
  tables_.insert(device);

  NodeRecord node;
  node.id = nodeId(device.id);
  node.parentId = device.siteId;
  node.deviceId = device.id;
  label(node, device.name);
  tables_.insert(node);
}

void Seeder::addRing(int site) {
  const int count = devicesAt(site);
  const int links = count > 2 ? count : count - 1;
  for (int place = 0; place < links; ++place) {
    const long a = deviceAt(site, place);
    const long z = deviceAt(site, (place + 1) % count);
    addLink(a, z, siteId(site), nodeId(a), nodeId(z));
  }
}

void Seeder::addTrunks(int site) {
  const int next = (site + 1) % sites_;
  const bool ringClosedTwice = sites_ == 2 && site == 1;
  if (next == site || ringClosedTwice) {
    return;
  }
  for (int place = 0; place < std::min(devicesAt(site), devicesAt(next)); place += 2) {
    addLink(deviceAt(site, place), deviceAt(next, place), NETWORK_SUBMAP_ID, siteId(site),
            siteId(next));
  }
}

std::string Seeder::nextPort(long device) {
  const int taken = portsTaken_[device]++;
  return "/rack=1/shelf=1/slot=" + std::to_string(1 + taken / 4) +
         "/port=" + std::to_string(1 + taken % 4);
}

void Seeder::addLink(long aDevice, long zDevice, const std::string& submap,
                     const std::string& aDrawn, const std::string& zDrawn) {
  const std::string id = std::to_string(++links_);
  LinkRecord link;
  link.id = id;
  link.aEnd = {aDevice, nextPort(aDevice)};
  link.zEnd = {zDevice, nextPort(zDevice)};
  link.rate = std::min(productOf(aDevice).rate, productOf(zDevice).rate);
  label(link, "Link " + id);
  tables_.insert(link);

  PhysicalLinkRecord physicalLink;
  physicalLink.id = id;
  physicalLink.linkId = id;
  tables_.insert(physicalLink);

  DisplayLinkRecord drawn;
  drawn.id = id;
  drawn.parentId = submap;
  drawn.aEndId = aDrawn;
  drawn.zEndId = zDrawn;
  label(drawn, link.nativeName);
  tables_.insert(drawn);
}

void Seeder::storeCounters() {
  setNextId(tables_, ObjectKind::DEVICE, devices_ + 1);
  setNextId(tables_, ObjectKind::NODE, 2 + sites_ + devices_);
  setNextId(tables_, ObjectKind::LINK, links_ + 1);
  setNextId(tables_, ObjectKind::PHYSICAL_LINK, links_ + 1);
  setNextId(tables_, ObjectKind::DISPLAY_LINK, links_ + 1);
}

}  // namespace

void seedInventory(Tables& tables, const SeedOptions& options) {
  if (options.devices < 0 || options.devices > 100000) {
    throw InventoryError("cannot be made with " + std::to_string(options.devices) +
                         " devices: 0 to 100000");
  }
  if (options.sites < 1 || options.sites > 1000) {
    throw InventoryError("cannot be made with " + std::to_string(options.sites) +
                         " sites: 1 to 1000");
  }
  Seeder(tables, options).run();
}

}  // namespace zk::agent
