// Forms 201, 202 and 203: the return-cum-chalan of an ordinary dealer by month, quarter and half year, each on A4 and
// on 132-column stationery.
//
// One row of the main query, one run of Detail_Format, three printed pages. All six run the same computation; wording
// and positions are their layouts', and a twin differs in its footer only. The rate tables are stored nowhere: they are
// built from the lines of the return into the boxes themselves, so that Detail_Format must run once in a run.
#pragma once

#include <string>
#include <string_view>

#include "frame/return_form.h"
#include "returns/rate_rows.h"

namespace dorvo::returns {

class VatReturn : public frame::ReturnForm {
 protected:
  using ReturnForm::ReturnForm;

  std::string query() const override;
  void Detail_Format() override;

 private:
  struct CertificateSales {
    value::Variant deduction = 0;
    value::Variant turnover = 0;
  };

  // The identification, before and after the figures.
  void cheque();
  void signature();
  void bank();
  void note();

  // Boxes 5 to 17.
  void balance_payable();
  void set_off_to_cst();
  void medicine_note();
  void deductions(const CertificateSales& certificate);
  void balance_turnover(const CertificateSales& certificate);
  void already_paid();

  // Boxes 18 and 19.
  void sales_by_rate();
  void works_contracts();
  void purchases_by_rate();
  void excess_row();
  CertificateSales certificate_sales();
  void all_purchases();

  // Box 20.
  void reductions();
  void total_reduction();
  void net_set_off();
  void opening_stock();
  void earlier_returns();
  void total_set_off();

  void zeros();
  void footer();

  // Runs `step` on each row of a query of lines.
  template <class Step>
  void each_line(std::string_view query, Step step);
  value::Variant line(std::string_view column) const { return rs->Fields(column); }
  double line_number(std::string_view column) const;  // fails with InvalidUseOfNull, naming report and column
  bool line_is(std::string_view sub_entry_type) const;
  void lines_by_rate(std::string_view query, RateTable table, std::string_view net_column);
  value::Variant total(RateTable table, std::string_view RateRow::*box) const;
  // The tax of a works contract record when its contract value includes it, else 0.
  value::Variant included_tax(std::string_view record_type, std::string_view tax);
};

class Form201 final : public VatReturn {
 public:
  Form201() : VatReturn("Form201") {}
};

class Form202 final : public VatReturn {
 public:
  Form202() : VatReturn("Form202") {}
};

class Form203 final : public VatReturn {
 public:
  Form203() : VatReturn("Form203") {}
};

class Form201132 final : public VatReturn {
 public:
  Form201132() : VatReturn("Form201132") {}
};

class Form202132 final : public VatReturn {
 public:
  Form202132() : VatReturn("Form202132") {}
};

class Form203132 final : public VatReturn {
 public:
  Form203132() : VatReturn("Form203132") {}
};

}  // namespace dorvo::returns
