// A sample control of its own for each test, and a container for it.
#pragma once

#include <gtest/gtest.h>

#include "Caller.h"
#include "SampleControl.h"
#include "TestSite.h"
#include "ole/ClassFactory.h"

namespace qrn::test {

struct SampleFixture : ::testing::Test {
  SampleFixture() : sample_(new Sample) {
    control = Com<IUnknown>::Take(&sample_->Inner());
    dispatch_ = Query<IDispatch>(control);
    dispatch_->Release();  // a second pointer, not a second reference
  }
  ~SampleFixture() override {
    static_cast<void>(dispatch_.detach());
    site.Unhost();
    control.reset();
    EXPECT_EQ(site.references, 0u) << "the site is still held";
  }

  IUnknown* unknown() { return control.get(); }
  IDispatch* object() { return dispatch_.get(); }
  Sample& sample() { return *sample_; }

  TestSite site;
  Com<IUnknown> control;

 private:
  Sample* sample_;
  Com<IDispatch> dispatch_;
};

}  // namespace qrn::test
