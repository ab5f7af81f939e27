// The frame that every report is built in: start steps, sweeps, footers, key and query.
//
// A report derives from Report, gives its query and its Detail_Format, and reads and writes its boxes by the names that
// the form's layout gives them. Page set-up and frame differences come from the table in page_setups.h, by report name.
//
// A box is its own accumulator: number() reads the leading number of its text (0 for empty text and for "NIL"), put()
// writes the plain decimal text of a number back. Nothing is rounded or formatted unless a report does it.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "convert/num_convert.h"
#include "engine/active_report.h"
#include "frame/page_setups.h"
#include "frame/settings.h"
#include "value/text.h"

namespace dorvo::frame {

class Report : public engine::ActiveReport {
 public:
  // `name` is both the report class and its stored layout. Fails with BadLayout when there is no such layout.
  explicit Report(std::string name);

  std::int32_t PropCMasterID() const { return m_CMasterID; }
  void PropCMasterID(std::int32_t key) { m_CMasterID = key; }

  // The like-named data property of a launcher ("PropSortBy", "ShowBorder", ...); kept until it is written again.
  void property(std::string_view name, value::Variant value);
  value::Variant property(std::string_view name) const;  // NULL when never written

  // Opens the report: runs it and hands it to the viewer port, without waiting for the user.
  void Show();
  // Opens the export dialog on the report's pages; nothing happens when there are none.
  void ShowExportDialog();
  virtual void ActiveReport_ToolbarClick(const engine::Tool& tool);

  // A launcher's PropHeading: the caption of `lblHeading`, kept for later runs.
  void heading(const std::string& caption);

 protected:
  // The whole SELECT text of recMaster, built anew at every run start.
  virtual std::string query() const = 0;

  virtual void Detail_Format() {}
  virtual void PageFooter_Format();

  // ---- boxes of the form, by name ----
  std::string text(std::string_view box) const;      // of a Field
  double number(std::string_view box) const;         // Val of its text
  double strict_number(std::string_view box) const;  // fails with TypeMismatch, naming report and box
  void put(std::string_view box,
           const value::Variant& v);  // fails with InvalidUseOfNull on NULL, naming report and box
  void add(std::string_view box, const value::Variant& v);  // box = number(box) + v, NULL fails alike
  void show(std::string_view control, bool visible);        // any control
  void caption(std::string_view label, std::string text);

  // ---- the row of the main query ----
  value::Variant master(std::string_view column);  // fails with ItemNotFound, naming report and column
  std::string master_text(std::string_view column) { return value::text_of(master(column)); }

  // ---- duties that reports share ----
  // `lblName` shows UserName when ShowFooter is True, else it is hidden.
  void show_user_name();

  convert::CNumConvert convert;
  std::shared_ptr<data::Recordset> rs;  // the reused secondary recordset

  std::int32_t m_CMasterID = 0;

  void ActiveReport_ReportStart() override;

 private:
  void set_printer();
  void set_page();
  void set_toolbar();
  void HideDataFields(bool flag);
  void HideFormArt(bool flag);

  const ReportKind* kind_;
  std::map<std::string, value::Variant, std::less<>> properties_;  // lower case names
};

}  // namespace dorvo::frame
