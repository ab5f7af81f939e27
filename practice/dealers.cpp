#include "practice/dealers.h"

#include <cstdio>

#include "practice/random.h"

namespace dorvo::practice {
namespace {

constexpr NamedRow kConstitutions[] = {{1, "Proprietor"},
                                       {2, "Partnership Firm"},
                                       {3, "Hindu Undivided Family"},
                                       {4, "Private Limited Company"},
                                       {5, "Public Limited Company"},
                                       {6, "Co-operative Society"},
                                       {7, "Trust"}};

constexpr NamedRow kSignatures[] = {
    {1, "Proprietor"},        {2, "Partner"},   {3, "Karta"},   {4, "Director"},
    {5, "Managing Director"}, {6, "Secretary"}, {7, "Manager"}, {8, "Power of Attorney Holder"}};

constexpr NamedRow kOffices[] = {{1, "PNE-VAT-C-101"}, {2, "PNE-VAT-D-214"}, {3, "MUM-VAT-E-032"},
                                 {4, "MUM-VAT-C-611"}, {5, "NGP-VAT-C-007"}, {6, "NSK-VAT-C-118"},
                                 {7, "KOL-VAT-C-045"}, {8, "AUR-VAT-D-003"}, {9, "SOL-VAT-C-012"}};

constexpr BankBranch kBanks[] = {
    {"Sahyadri Sahakari Bank", "Laxmi Road, Pune"},    {"Bank of the Deccan", "Shivajinagar"},
    {"Konkan Merchants Co-op. Bank", "Fort, Mumbai"},  {"Godavari Urban Bank", "Panchavati, Nashik"},
    {"Vidarbha Commercial Bank", "Sitabuldi, Nagpur"}, {"Panchganga Nagari Sahakari Bank", "Rajarampuri, Kolhapur"}};

// A described dealer. A null pointer is a NULL column, "" an empty one; 0 is no row.
struct Facts {
  DescribedDealer about;
  const char* name = "";
  const char* address = "";
  const char* address1 = "";
  const char* taluka = "";
  const char* city = "";
  const char* district = "";
  const char* state = "Maharashtra";
  const char* pin = "";
  const char* file_no = "";
  const char* vat = "";
  const char* bst = "";
  const char* cst = "";
  const char* tin_vat = "";
  const char* tin_cst = "";
  int constitution = 1;
  int signature = 1;
  const char* signatory = "";
  int office = 1;
  value::Variant medicine = false;
};

const std::vector<Facts>& facts() {
  static const std::vector<Facts> all = {
      {.about = {1, "All numbers, all address items, file number: a retailer"},
       .name = "Shree Ganesh Kirana & General Stores",
       .address = "Shop No. 4, Ganesh Prasad Building",
       .address1 = "1182, Sadashiv Peth, Near Vishrambag Wada",
       .taluka = "Haveli",
       .city = "Pune",
       .district = "Pune",
       .pin = "411030",
       .file_no = "P-014",
       .vat = "411030V00417",
       .bst = "411030S02193",
       .cst = "411030C01876",
       .tin_vat = "27560004173V",
       .tin_cst = "27560004173C",
       .signatory = "Ramesh Vasant Kulkarni"},
      {.about = {2, "Number of the earlier law only, no file number: a restaurant"},
       .name = "Hotel Shivneri Restaurant & Permit Room",
       .address = "Plot No. 21, Old Mumbai-Pune Road",
       .address1 = "Opposite S. T. Stand",
       .taluka = "Maval",
       .city = "Lonavala",
       .district = "Pune",
       .pin = "410401",
       .bst = "410401S00856",
       .cst = "410401C00702",
       .constitution = 2,
       .signature = 2,
       .signatory = "Sunil Baburao Shinde",
       .office = 2},
      {.about = {3, "Number of the Act of 2002, no TIN; a name in two scripts: a caterer"},
       .name = "अन्नपूर्णा Caterers",
       .address = "१२, Tilak Road",
       .address1 = "Swargate Corner",
       .taluka = "Haveli",
       .city = "Pune",
       .district = "Pune",
       .pin = "411042",
       .file_no = "P-027",
       .vat = "411042V00932",
       .cst = "411042C00611",
       .signatory = "Sau. Mangala Prakash Joshi"},
      {.about = {4, "TIN under the Central Act only; name with quotes and ampersand: a baker"},
       .name = "D'Souza & Sons \"Prabhat\" Bakery",
       .address = "House No. 77, Church Street",
       .address1 = "Bandra (West)",
       .city = "Mumbai",
       .district = "Mumbai Suburban",
       .pin = "400050",
       .file_no = "M-003",
       .vat = "400050V01127",
       .bst = "400050S04410",
       .cst = "400050C03205",
       .tin_cst = "27120011270C",
       .constitution = 2,
       .signature = 2,
       .signatory = "Anthony F. D'Souza",
       .office = 3},
      {.about = {5, "TINs, no number of the earlier law: second-hand motor vehicles"},
       .name = "Deccan Pre-Owned Cars Pvt. Ltd.",
       .address = "S. No. 118/2, Mumbai-Bangalore Highway",
       .address1 = "Wakad",
       .taluka = "Mulshi",
       .city = "Pune",
       .district = "Pune",
       .pin = "411057",
       .file_no = "P-031",
       .vat = "411057V00058",
       .cst = "411057C00041",
       .tin_vat = "27740000582V",
       .tin_cst = "27740000582C",
       .constitution = 4,
       .signature = 4,
       .signatory = "Nitin Chandrakant Deshpande"},
      {.about = {6, "Long name, long address"},
       .name = "Shri Chhatrapati Rajarshi Shahu Maharaj Taluka Sahakari Shetkari Kharedi Vikri Sangh and Allied "
               "Agricultural Produce Processing Society Maryadit",
       .address = "Gat No. 1417/1B/2, Shahu Market Yard, Godown Block No. 11 to 14, behind the Cotton Ginning and "
                  "Pressing Factory",
       .address1 = "Kolhapur-Sangli Road, Near Panchganga Cold Storage, Post Hatkanangale Industrial Area",
       .taluka = "Hatkanangale",
       .city = "Ichalkaranji",
       .district = "Kolhapur",
       .pin = "416115",
       .file_no = "KOL/2005/0117-A",
       .vat = "416115V00029",
       .bst = "416115S00187",
       .cst = "416115C00166",
       .tin_vat = "27250000292V",
       .tin_cst = "27250000292C",
       .constitution = 6,
       .signature = 6,
       .signatory = "Dattajirao Shankarrao Ghorpade-Nimbalkar",
       .office = 7},
      {.about = {7, "Name and address in Devanagari"},
       .name = "श्री महालक्ष्मी Traders",
       .address = "दुकान क्र. ७, महाद्वार रोड",
       .address1 = "Near Mahalaxmi Temple",
       .taluka = "करवीर",
       .city = "Kolhapur",
       .district = "Kolhapur",
       .pin = "416012",
       .file_no = "K-008",
       .vat = "416012V00318",
       .bst = "416012S01144",
       .tin_vat = "27260003187V",
       .constitution = 3,
       .signature = 3,
       .signatory = "सौ. सुनंदा विजय पाटील",
       .office = 7},
      {.about = {8, "Address lines only: no taluka, city, district, State or PIN"},
       .name = "Nagpur Orange Growers & Packers",
       .address = "Shed No. 5, Kalamna Market",
       .address1 = "Bhandara Road, Nagpur",
       .state = "",
       .file_no = "N-002",
       .vat = "440008V00215",
       .bst = "440008S00760",
       .cst = "440008C00733",
       .tin_vat = "27310002154V",
       .tin_cst = "27310002154C",
       .constitution = 2,
       .signature = 2,
       .signatory = "Prakash M. Bhoyar",
       .office = 5},
      {.about = {9, "PIN without State, one address line"},
       .name = "Panchavati Steel Furniture",
       .address = "Ambad Link Road, MIDC",
       .taluka = "Nashik",
       .city = "Nashik",
       .district = "Nashik",
       .state = "",
       .pin = "422010",
       .file_no = "NSK-19",
       .vat = "422010V00542",
       .bst = "422010S01290",
       .cst = "422010C01203",
       .tin_vat = "27440005425V",
       .tin_cst = "27440005425C",
       .signatory = "Vijay Dinkar Wagh",
       .office = 6},
      {.about = {10, "Address NULL throughout; no constitution, no signature, no office, no signatory"},
       .name = "Bombay Oil Mills",
       .address = nullptr,
       .address1 = nullptr,
       .taluka = nullptr,
       .city = nullptr,
       .district = nullptr,
       .state = nullptr,
       .pin = nullptr,
       .vat = "400009V00871",
       .bst = nullptr,
       .cst = nullptr,
       .tin_vat = nullptr,
       .tin_cst = nullptr,
       .constitution = 0,
       .signature = 0,
       .signatory = nullptr,
       .office = 0},
      {.about = {11, "Manufacturer of medicine"},
       .name = "Ashwini Ayurved Pharma Pvt. Ltd.",
       .address = "W-52, MIDC Area",
       .address1 = "Waluj",
       .taluka = "Gangapur",
       .city = "Aurangabad",
       .district = "Aurangabad",
       .pin = "431136",
       .file_no = "A-011",
       .vat = "431136V00107",
       .bst = "431136S00391",
       .cst = "431136C00377",
       .tin_vat = "27800001074V",
       .tin_cst = "27800001074C",
       .constitution = 4,
       .signature = 5,
       .signatory = "Dr. Ashwini R. Kale",
       .office = 8,
       .medicine = true},
      {.about = {12, "Flag of medicine NULL"},
       .name = "Siddheshwar Medical & Surgical Agencies",
       .address = "415, Navi Peth",
       .city = "Solapur",
       .district = "Solapur",
       .pin = "413007",
       .file_no = "S-005",
       .vat = "413007V00264",
       .bst = "413007S00815",
       .tin_vat = "27640002648V",
       .constitution = 2,
       .signature = 2,
       .signatory = "Iqbal Yusuf Shaikh",
       .office = 9,
       .medicine = {}},
      {.about = {13, "Works contractor"},
       .name = "Sahyadri Infrastructure & Builders",
       .address = "301, Nirmal Chambers, Law College Road",
       .taluka = "Haveli",
       .city = "Pune",
       .district = "Pune",
       .pin = "411004",
       .file_no = "P-044",
       .vat = "411004V00698",
       .bst = "411004S02551",
       .cst = "411004C02447",
       .tin_vat = "27570006986V",
       .tin_cst = "27570006986C",
       .constitution = 2,
       .signature = 8,
       .signatory = "Makarand S. Gokhale",
       .office = 2},
      {.about = {14, "Motor spirit dealer"},
       .name = "Jai Bhavani Petroleum Service Station",
       .address = "N. H. 4, Kamothe Junction",
       .taluka = "Panvel",
       .city = "Panvel",
       .district = "Raigad",
       .pin = "410209",
       .file_no = "R-001",
       .vat = "410209V00033",
       .bst = "410209S00120",
       .tin_vat = "27200000337V",
       .signatory = "Balasaheb Kashinath Mhatre",
       .office = 4},
      {.about = {15, "Unit under the package scheme of incentives"},
       .name = "Vidarbha Agro Textiles Ltd.",
       .address = "Plot D-9, Growth Centre MIDC",
       .address1 = "Nandgaon Peth",
       .taluka = "Amravati",
       .city = "Amravati",
       .district = "Amravati",
       .pin = "444901",
       .file_no = "N-020",
       .vat = "444901V00012",
       .bst = "444901S00047",
       .cst = "444901C00045",
       .tin_vat = "27330000128V",
       .tin_cst = "27330000128C",
       .constitution = 5,
       .signature = 5,
       .signatory = "Hemant G. Rathi",
       .office = 5},
      {.about = {16, "No registration number of any kind"},
       .name = "New Maharashtra Electricals",
       .address = "18, M. G. Road",
       .city = "Thane",
       .district = "Thane",
       .pin = "400601",
       .file_no = "T-002",
       .signatory = "Farida H. Merchant",
       .office = 4},
  };
  return all;
}

value::Variant text_or_null(const char* text) {
  return text == nullptr ? value::Variant() : value::Variant(text);
}
value::Variant key_or_null(int key) {
  return key == 0 ? value::Variant() : value::Variant(key);
}

constexpr std::string_view kTradeNames[] = {
    "Steel Traders",    "Hardware Stores",   "Cloth Centre",    "Electricals", "Agro Agencies",  "Paper Mart",
    "Auto Spares",      "Timber Depot",      "Provision Store", "Chemicals",   "Medical Stores", "Ceramics",
    "Plastic Products", "Engineering Works", "Footwear",        "Jewellers",   "Dairy Products", "Paints & Colours"};
constexpr std::string_view kHouseNames[] = {
    "Shree Samarth", "Mahalaxmi", "New Bharat", "Sai Krupa", "Vaishnavi", "Om Sadguru", "Jai Malhar", "Parag",
    "Chintamani",    "Tirupati",  "Prabhat",    "Swastik",   "Gurudatta", "Royal",      "Konkan",     "Deepak",
    "Ajinkya",       "Morya",     "Sahyadri",   "Navrang",   "Pooja",     "Diamond",    "Balaji",     "Rajhans"};
constexpr std::string_view kFirstNames[] = {"Ramesh",  "Sunita", "Vijay",     "Anil",    "Meena",  "Sanjay",
                                            "Prakash", "Shobha", "Dattatray", "Imran",   "Rohini", "Kishor",
                                            "Farida",  "Joseph", "Hemant",    "Nandini", "Suresh", "Balasaheb"};
constexpr std::string_view kLastNames[] = {"Kulkarni", "Patil",   "Deshmukh", "Shinde",    "Joshi",  "Pawar",
                                           "Shaikh",   "Gaikwad", "Mehta",    "Fernandes", "Jadhav", "Bhosale",
                                           "Wagh",     "Chavan",  "Rathi",    "Gokhale",   "Sawant", "Thakur"};
constexpr std::string_view kStreets[] = {"Laxmi Road",    "Station Road",  "M. G. Road",        "Shivaji Chowk",
                                         "Market Yard",   "Tilak Path",    "Industrial Estate", "Main Bazar Peth",
                                         "Old Agra Road", "Subhash Nagar", "Gandhi Chowk",      "College Road"};

struct Town {
  std::string_view city;
  std::string_view taluka;
  std::string_view district;
  int pin;
  int office;
};
constexpr Town kTowns[] = {{"Pune", "Haveli", "Pune", 411002, 1},
                           {"Baramati", "Baramati", "Pune", 413102, 1},
                           {"Mumbai", "", "Mumbai", 400003, 3},
                           {"Kalyan", "Kalyan", "Thane", 421301, 4},
                           {"Nagpur", "", "Nagpur", 440018, 5},
                           {"Malegaon", "Malegaon", "Nashik", 423203, 6},
                           {"Sangli", "Miraj", "Sangli", 416416, 7},
                           {"Jalna", "Jalna", "Jalna", 431203, 8},
                           {"Pandharpur", "Pandharpur", "Solapur", 413304, 9},
                           {"Jalgaon", "Jalgaon", "Jalgaon", 425001, 6}};

// A registration number as the offices write them: PIN code, letter, running number.
std::string registration(int pin, char letter, int number) {
  char text[32];
  std::snprintf(text, sizeof text, "%06d%c%05d", pin, letter, number);
  return text;
}

std::string tin(int pin, int number, char letter) {
  char text[32];
  std::snprintf(text, sizeof text, "27%03d%05d%d%c", pin % 1000, number, (pin + number) % 10, letter);
  return text;
}

void set_numbers(Row& row, int pin, int number, Random& random) {
  row.set("VATNo", registration(pin, 'V', number))
      .set("TinVAT", random.chance(85) ? tin(pin, number, 'V') : "")
      .set("BSTNo", random.chance(70) ? registration(pin, 'S', number + 731) : "");
  if (!random.chance(60)) return;
  row.set("CSTNo", registration(pin, 'C', number + 402)).set("TinCST", tin(pin, number, 'C'));
}

void set_person(Row& row, int constitution, Random& random) {
  const std::string person = std::string(random.pick(kFirstNames)) + " " + std::string(random.pick(kLastNames));
  row.set("ConstitutionID", constitution)
      .set("SignatureID", constitution)  // proprietor for a proprietor, partner for a firm, and so on
      .set("SignatureName", person)
      .set("MobileNo", "98" + std::to_string(random.between(10000000, 99999999)));
}

Trade invented_trade(Random& random) {
  constexpr int kMonths[] = {1, 1, 3, 3, 3, 6};
  const int months = random.pick(kMonths);
  // The larger the dealer, the shorter its return period.
  const int lakhs = months == 1 ? random.between(10, 400) : months == 3 ? random.between(2, 30) : random.between(1, 5);
  return {months, lakhs * 100000.0, random.between(0, 4), random.chance(30)};
}

}  // namespace

std::span<const NamedRow> constitutions() {
  return kConstitutions;
}
std::span<const NamedRow> signatures() {
  return kSignatures;
}
std::span<const NamedRow> offices() {
  return kOffices;
}
std::span<const BankBranch> bank_branches() {
  return kBanks;
}

std::span<const DescribedDealer> described_dealers() {
  static const std::vector<DescribedDealer> all = [] {
    std::vector<DescribedDealer> abouts;
    for (const Facts& dealer : facts()) abouts.push_back(dealer.about);
    return abouts;
  }();
  return all;
}

Row described_dealer(int code, int year) {
  const Facts& dealer = facts().at(static_cast<std::size_t>(code - 1));
  Row row("Customer");
  row.set("CustomerID", code + 100 * (year - 1))
      .set("CustomerCode", code)
      .set("YearID", year)
      .set("Name", text_or_null(dealer.name))
      .set("Address", text_or_null(dealer.address))
      .set("Address1", text_or_null(dealer.address1))
      .set("Street", text_or_null(dealer.address1))
      .set("Building", text_or_null(dealer.address))
      .set("Taluka", text_or_null(dealer.taluka))
      .set("City", text_or_null(dealer.city))
      .set("District", text_or_null(dealer.district))
      .set("State", text_or_null(dealer.state))
      .set("PinCode", text_or_null(dealer.pin))
      .set("FileNo", text_or_null(dealer.file_no))
      .set("VATNo", text_or_null(dealer.vat))
      .set("BSTNo", text_or_null(dealer.bst))
      .set("CSTNo", text_or_null(dealer.cst))
      .set("TinVAT", text_or_null(dealer.tin_vat))
      .set("TinCST", text_or_null(dealer.tin_cst))
      .set("ConstitutionID", key_or_null(dealer.constitution))
      .set("SignatureID", key_or_null(dealer.signature))
      .set("SignatureName", text_or_null(dealer.signatory))
      .set("STOID", key_or_null(dealer.office))
      .set("ChallanType", "Treasury")
      .set("Medicine", dealer.medicine);
  return row;
}

InventedDealer invented_dealer(int number, std::uint64_t seed) {
  Random random(seed * 1000003u + static_cast<std::uint64_t>(number));
  const Town& town = random.pick(kTowns);
  const int constitution = random.chance(50) ? 1 : random.between(2, 7);
  std::string name = std::string(random.pick(kHouseNames)) + " " + std::string(random.pick(kTradeNames));
  if (constitution == 4) name += " Pvt. Ltd.";
  if (constitution == 5) name += " Ltd.";
  const std::string street(random.pick(kStreets));
  const std::string building = "Shop No. " + std::to_string(random.between(1, 240));

  InventedDealer dealer{Row("Customer"), {}};
  dealer.row.set("CustomerCode", 1001 + number)
      .set("Name", name)
      .set("Flatno", building)
      .set("Street", street)
      .set("Address", building + ", " + street)
      .set("Address1", random.chance(40) ? "Near " + std::string(random.pick(kLastNames)) + " Hospital" : "")
      .set("Taluka", town.taluka)
      .set("City", town.city)
      .set("District", town.district)
      .set("State", "Maharashtra")
      .set("PinCode", std::to_string(town.pin))
      .set("FileNo", random.chance(80) ? "F-" + std::to_string(1001 + number) : "")
      .set("STOID", town.office)
      .set("ChallanType", random.chance(75) ? "Treasury" : "Bank")
      .set("efiling", random.chance(20))
      .set("EEnrolled", random.chance(20));
  set_numbers(dealer.row, town.pin, 1 + number % 99000, random);
  set_person(dealer.row, constitution, random);
  dealer.trade = invented_trade(random);
  return dealer;
}

}  // namespace dorvo::practice
