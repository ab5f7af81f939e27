#include "automation/report_list.h"

#include "composition/intimation.h"
#include "returns/form_201.h"

namespace dorvo::automation {

using frame::make_report;

// A row without a factory is a report that this version does not build yet.
std::vector<frame::ReportClass> report_list() {
  return {
      {"Form201", make_report<returns::Form201>},
      {"Form201132", make_report<returns::Form201132>},
      {"Form202", make_report<returns::Form202>},
      {"Form202132", make_report<returns::Form202132>},
      {"Form203", make_report<returns::Form203>},
      {"Form203132", make_report<returns::Form203132>},
      {"Form208"},
      {"Form208132"},
      {"Form209"},
      {"Form209E"},
      {"Form210"},

      {"Form204"},
      {"Form204132"},
      {"Form205"},
      {"Form205132"},
      {"Form206"},
      {"Form206132"},
      {"Form207"},
      {"Form207132"},
      {"Form214"},
      {"Form214132"},
      {"Form1", make_report<composition::Form1>},
      {"Form2", make_report<composition::Form2>},
      {"Form3", make_report<composition::Form3>},
      {"Form4", make_report<composition::Form4>},
      {"Form5", make_report<composition::Form5>},

      {"CSTReturnIIIB"},
      {"CSTReturnIIIB132"},
      {"CSTReturnIIIBAnnexure"},

      {"PTFormIII"},
      {"PTFormIII132"},
      {"PTFormIIINew"},
      {"PTFormIIINew10"},
      {"PTRFormIII"},
      {"PTRFormIIInew"},
      {"FormVIII"},

      {"Bill"},
      {"Receipt"},
      {"BillRegister"},
      {"ReceiptRegister"},
      {"SummerisedBill"},
      {"DealerBill"},
      {"DealerReceipt"},

      {"StatementShort"},
      {"CompositionStatement"},
      {"InterestMaster"},
      {"Liability0910"},
      {"AuditDetailsRpt"},
      {"DealerList"},
      {"AddressLabel"},
  };
}

}  // namespace dorvo::automation
