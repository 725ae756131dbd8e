// A form that Designer has saved, compiled into a program: uic's code holds our components, and they find each other.
#include "ui_scene.h"

#include <zk/_zkcomtypes/attributes.h>
#include <zk/_zkcomtypes/material.h>

#include <QCoreApplication>
#include <gtest/gtest.h>

namespace {

TEST(CompiledFormTest, HasWhatWasEdited) {
    QWidget window;
    Ui::Form form;
    form.setupUi(&window);
    QCoreApplication::processEvents();

    EXPECT_EQ(form.box->GetDisplayList(), form.scene);
    EXPECT_EQ(form.scene->GetZkOglCanvas(), form.canvas);
    EXPECT_EQ(form.canvas->GetWinControl(), form.control);
    EXPECT_EQ(form.light->GetZKOglCanvas(), form.canvas);
    EXPECT_TRUE(form.light->GetEnabled());
    EXPECT_TRUE(form.box->GetVisible());
    EXPECT_EQ(form.box->GetA(), 2.5);
    EXPECT_EQ(form.box->Get_translation(), "-1/-1/0");
    EXPECT_EQ(form.box->getAttributes()->getMaterial()->diffuseColor(), QColor(255, 0, 0));
    EXPECT_EQ(form.plane->GetData(), QStringList({"0/0/0", "1/0/0"}));
    EXPECT_EQ(form.box->parent(), &window);
    EXPECT_TRUE(form.box->dynamicPropertyNames().isEmpty());
    EXPECT_FALSE(form.box->isWidgetType());
}

}  // namespace
