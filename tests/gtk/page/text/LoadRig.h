#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "gtk/page/text/PageLoad.h"

// The engine's part is played by hand: what it would tell is told by the test.
class Loads : public testing::Test, protected LoadView, protected LoadListener {
 protected:
  using Kind = LoadFault::Kind;

  bool Gone() const override { return gone; }
  std::string EngineAddress() const override { return address; }
  std::string EngineTitle() const override { return title; }
  bool EngineLoads() const override { return engine_loads; }
  bool WorksOffline() const override { return offline; }
  std::optional<std::string> BadProxy() const override { return bad_proxy; }
  bool PromisedHttps(const std::string&) const override { return promised; }
  bool AsksBeforePlain() const override { return asks_before_plain; }
  void LetPlainThrough(bool through) override { plain_through = through; }
  void LoadAddress(const std::string& uri) override { asked.push_back(uri); }
  void LoadHtml(const std::string& html, const std::string& uri) override {
    shown = html;
    asked.push_back("own " + uri);
  }
  bool Isolate() override { return std::exchange(opened, false); }
  void Reload() override { asked.push_back("again"); }
  void StopLoading() override {}
  void Trust(GTlsCertificate*, const std::string& host) override { asked.push_back("trust " + host); }
  bool Trusts(const std::string& host) const override {
    return std::find(asked.begin(), asked.end(), "trust " + host) != asked.end();
  }
  std::shared_ptr<void> ReadSource(const std::string& uri, bool, std::function<void(const std::string&)> done,
                                   std::function<void(const ErrorPage&)> failed) override {
    asked.push_back("source " + uri);
    source_done = std::move(done);
    source_failed = std::move(failed);
    auto reading = std::make_shared<int>();
    source = reading;
    return reading;
  }

  void LoadWanted() override {}
  void LoadBegan() override {
    ++began;
    if (within_began) within_began();
  }
  void LoadCommitted() override {}
  void LoadArrived() override {}
  void LoadEnded() override { ++ended; }
  void Progressed(long progress, long) override { last_progress = progress; }
  void LoadStatusChanged(const std::string& text) override { status = text; }
  void ProcessDied() override { ++died; }

  void Want(const std::string& uri, const std::string& fallback = {}) { load.Start({uri, fallback, true}); }
  // The engine's reports of a load that comes through.
  void Begin(const std::string& uri) {
    address = uri;
    load.OnStarted();
  }
  void Commit() { load.OnCommitted(); }
  void Complete(const std::string& uri, const std::string& of_title = "Title") {
    Begin(uri);
    Commit();
    title = of_title;
    load.OnFinished();
  }
  // Of one that doesn't.
  void Fail(Kind kind) {
    load.OnFailed(address, false, {kind, "why"});
    load.OnFinished();
  }
  void ExpectCounts(int all) {
    EXPECT_EQ(began, all);
    EXPECT_EQ(ended, all);
    EXPECT_FALSE(load.Busy());
    EXPECT_EQ(status, "");
  }
  static void Pump(const std::function<bool()>& until) {
    while (!until()) g_main_context_iteration(nullptr, TRUE);
  }
  void PumpUntilEnded(int all) {
    Pump([&] { return ended == all; });
  }

  // The address behind a button of the own page on show.
  std::string Button(size_t n) const {
    size_t at = 0;
    for (size_t i = 0; i <= n; ++i) at = shown.find("href=\"", at + 1);
    return shown.substr(at + 6, shown.find('"', at + 6) - at - 6);
  }

  bool opened = false;  // by another page
  bool gone = false, engine_loads = false, offline = false, promised = false;
  bool asks_before_plain = false, plain_through = false;
  std::optional<std::string> bad_proxy;
  std::string address, title, shown, status;
  std::vector<std::string> asked;
  std::function<void(const std::string&)> source_done;
  std::function<void(const ErrorPage&)> source_failed;
  std::weak_ptr<void> source;
  std::function<void()> within_began;
  int began = 0, ended = 0, died = 0;
  long last_progress = 0;
  PageLoad load{*this, *this, [](const std::function<void()>& handler) { handler(); }};
};
