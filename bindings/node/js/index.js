import bouncecheck from './index.cjs';

export const { classify, init } = bouncecheck;
