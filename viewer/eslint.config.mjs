import { dirname } from "node:path";
import { fileURLToPath } from "node:url";
import tseslint from "typescript-eslint";

const here = dirname(fileURLToPath(import.meta.url));
const markup = ["innerHTML", "outerHTML", "insertAdjacentHTML"];

export default tseslint.config(
  { ignores: ["node_modules/", "**/*.d.ts"] },
  { linterOptions: { reportUnusedDisableDirectives: "error" } },
  {
    files: ["**/*.ts"],
    extends: [...tseslint.configs.strictTypeChecked, ...tseslint.configs.stylisticTypeChecked],
    languageOptions: { parserOptions: { projectService: true, tsconfigRootDir: here } },
    rules: {
      // typed arrays and columns are indexed within their length; the checks would hide the ones that matter
      "@typescript-eslint/no-non-null-assertion": "off",
      "@typescript-eslint/restrict-template-expressions": ["error", { allowNumber: true }],
      "@typescript-eslint/prefer-literal-enum-member": "off",
      "@typescript-eslint/consistent-type-imports": "error",
      // texts of a document are data, never markup
      "no-restricted-properties": [
        "error",
        ...markup.map((property) => ({ property, message: "Use text nodes." })),
        { object: "document", property: "write", message: "Use text nodes." },
      ],
      eqeqeq: ["error", "always", { null: "ignore" }],
      "no-eval": "error",
    },
  },
  {
    files: ["src/model/**/*.ts"],
    rules: {
      "no-restricted-imports": [
        "error",
        {
          patterns: [
            {
              group: ["three", "three/*", "three-mesh-bvh", "../*"],
              message: "The model knows neither the picture nor the page.",
            },
          ],
        },
      ],
    },
  },
  {
    files: ["src/panels/**/*.ts"],
    rules: {
      "no-restricted-imports": [
        "error",
        { patterns: [{ group: ["three", "three/*"], message: "Panels do not draw." }] },
      ],
    },
  },
);
