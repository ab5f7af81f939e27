// Printing on a real print service.
#include <QLabel>
#include <QMessageBox>
#include <QStatusBar>

#include "preview/print_dialog.h"
#include "tests/export/hand_pages.h"
#include "tests/preview/preview_fixture.h"
#include "tests/preview/print_service.h"

namespace dorvo::preview {
namespace {

class PrintTest : public PreviewTest {
 protected:
  void SetUp() override {
    if (!PrintService::is_installed()) GTEST_SKIP() << "no print service is installed: " << PrintService::kProgram;
    service = std::make_unique<PrintService>();
    ASSERT_TRUE(comes([&] { return service->is_up(); }));
  }
  // Clicks Print and lets the next dialog print on a queue.
  static void print_on(PreviewWindow& window, const char* queue, const char* pages) {
    in_dialog([=](QDialog& dialog) {
      auto& list = child<QComboBox>(dialog, "Printer");
      list.setCurrentIndex(list.findData(queue));
      type(dialog, "Page Ranges", pages);
      click(dialog, "Print");
    });
    tool(window, "Print...");
  }
  static std::string told(PreviewWindow& window) { return window.statusBar()->currentMessage().toStdString(); }
  std::unique_ptr<PrintService> service;
};

TEST_F(PrintTest, PrintersAndTheDefault) {
  std::string names;
  for (const PrinterName& printer : printers())
    names += printer.name + (printer.is_default ? "* " : " ") + printer.description + "|";
  EXPECT_EQ(names, "Broken Broken queue|Paper* Paper queue|Stopped Stopped queue|");
}

TEST_F(PrintTest, ChosenPagesComeOutAsPdf) {
  PreviewWindow& window = shown();
  print_on(window, "Paper", "2-3");
  EXPECT_TRUE(comes([&] { return told(window) == "Form201: job 1 on Paper is printed"; })) << told(window);
  EXPECT_FALSE(child<QPushButton>(window, "Cancel Printing").isVisible());
  const std::string pdf = test::read_file(service->paper());
  EXPECT_EQ(pdf.substr(0, 8), "%PDF-1.3");
  EXPECT_NE(pdf.find("/Count 2"), std::string::npos);
  const std::string options = test::read_file(service->options());
  EXPECT_EQ(options.substr(0, 2), "1 ");
  for (const char* option : {"media=iso_a4_210x297mm", "print-quality=5", "print-scaling=none"})
    EXPECT_NE(options.find(option), std::string::npos) << option << " in " << options;
}

TEST_F(PrintTest, ACancelledJobSaysSo) {
  PreviewWindow& window = shown();
  print_on(window, "Stopped", "1");
  EXPECT_TRUE(told(window).starts_with("Form201: job 1 on Stopped is waiting")) << told(window);
  click(window, "Cancel Printing");
  EXPECT_TRUE(comes([&] { return window.findChild<QMessageBox*>() != nullptr; }));
  EXPECT_TRUE(told(window).starts_with("Form201: job 1 on Stopped was cancelled")) << told(window);
}

TEST_F(PrintTest, AFailedJobSaysSo) {
  PreviewWindow& window = shown();
  print_on(window, "Broken", "1");
  EXPECT_TRUE(comes([&] { return window.findChild<QMessageBox*>() != nullptr; }));
  EXPECT_TRUE(told(window).starts_with("Form201: job 1 on Broken failed")) << told(window);
}

TEST_F(PrintTest, WhatCannotBeSentIsOneLine) {
  test::HandPages hand;
  hand.page();
  PrintOrder order;
  order.printer = "Nowhere";
  try {
    send(order, {hand.pages().at(0)});
    ADD_FAILURE() << "was sent";
  } catch (const value::Failure& failure) {
    EXPECT_EQ(failure.description(), "Printer Nowhere: there is none of this name");
  }
  cupsSetServer("127.0.0.1:1");  // nothing listens there
  PreviewWindow& window = shown();
  tool(window, "Print...");
  auto* box = window.findChild<QMessageBox*>();
  ASSERT_NE(box, nullptr);
  EXPECT_EQ(box->text(), "The print service at 127.0.0.1: it does not answer");
}

}  // namespace
}  // namespace dorvo::preview
